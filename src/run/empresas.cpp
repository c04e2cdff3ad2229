#include "run/empresas.h"
#include "data/consultas.h"

namespace tolmo::run {

using namespace data;

bool HayEmpresas(Programa& programa)
{
    QString sql = QStringLiteral("select * from m_empresa");
    return !AbreLectura(programa, sql, programa.ConexionLocal).Fin();
}

QStringList ListaEmpresas(Programa& programa)
{
    QStringList lista;
    QString sql = QStringLiteral("Select * from m_empresa ORDER BY CODEMPRESA");
    auto empresas = AbreLectura(programa, sql, programa.ConexionLocal);
    for (; !empresas.Fin(); empresas.Siguiente())
        lista << Texto(empresas["codempresa"]) + u' ' + Texto(empresas["Descripcion"]);
    return lista;
}

} // namespace tolmo::run
