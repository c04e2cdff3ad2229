#include "sync/corrida.h"

namespace tolmo::sync {

void VuelcaLote(Corrida& corrida, const QString& titulo)
{
    const QString& sentencias = corrida.lote.Ficheros().Sentencias;
    corrida.sitio.EjecutaPHP(sentencias, titulo);
    // Whether or not it got through: the next batch starts empty.
    batch::BorraFicheroLocal(sentencias);
}

data::Recordset LeeLocal(Corrida& corrida, QString sql)
{
    data::Programa& programa = corrida.programa;
    programa.DialectoActivo = data::Dialecto::Access;
    auto filas = data::AbreLectura(programa, sql, programa.ConexionLocal);
    programa.DialectoActivo = data::Dialecto::MySql;
    return filas;
}

data::Recordset LeeTienda(Corrida& corrida, QString sql)
{
    return data::AbreLectura(corrida.programa, sql);
}

void ReconectaTienda(data::Programa& programa)
{
    programa.ConexionTienda.Desconecta();
    programa.ConexionTienda.Conecta(programa.CadenaConexion);
}

QString TextoO(const data::Valor& valor)
{
    return data::Texto(data::SinNulo(valor));
}

QString SinComillas(QString texto)
{
    return texto.replace(u'\'', u'´');
}

QString ConSaltosHtml(QString texto)
{
    return texto.replace(QStringLiteral("\r\n"), QStringLiteral("<br>"));
}

QString ListaSql(QString lista)
{
    return lista.replace(QStringLiteral(","), QStringLiteral("','"));
}

QString HoySql(const data::Programa& programa)
{
    return data::FechaSql(programa, programa.reloj.Hoy());
}

} // namespace tolmo::sync
