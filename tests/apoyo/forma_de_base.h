#pragma once
#include <QString>

/// The form that tests give to management databases: files of Access where the environment has
/// KOV_FORMA=mdb, else the embedded one.
inline bool EnFicherosDeAccess()
{
    return qEnvironmentVariable("KOV_FORMA") == QStringLiteral("mdb");
}

/// The file of a database: "bases/BD000001.sqlite" for "bases/BD000001".
inline QString FicheroDeBase(const QString& base)
{
    return base + (EnFicherosDeAccess() ? QStringLiteral(".mdb") : QStringLiteral(".sqlite"));
}

/// The text that opens it, as the program writes it for both forms.
inline QString CadenaDeBase(const QString& base)
{
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + base +
           QStringLiteral(".mdb;Persist Security Info=False");
}

/// How many tables of processes there are while so many run, or once they have ended by an error:
/// where the database is a file of Access, such a table never reaches it and ends with its process.
inline qsizetype TablasALaVista(qsizetype procesos)
{
    return EnFicherosDeAccess() ? 0 : procesos;
}
