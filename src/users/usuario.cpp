#include "users/usuario.h"
#include "data/plantilla.h"
#include <algorithm>
#include <utility>

namespace tolmo::users {

using namespace data;

namespace {

const QString Tabla = QStringLiteral("USUARIOS");
const QString PrimerCodigo = QStringLiteral("00001");

// clang-format off
constexpr Plantilla SqlUsuario(u"SELECT * FROM USUARIOS WHERE codigo='{codigo}'");
constexpr Plantilla SqlUltimoCodigo(u"SELECT max(codigo) as mcodigo FROM USUARIOS");
constexpr Plantilla SqlExiste(u"SELECT codigo FROM USUARIOS WHERE codigo='{codigo}'");
constexpr Plantilla SqlBorra(u"DELETE FROM usuarios WHERE codigo='{codigo}'");
constexpr Plantilla CondicionDeCodigo(u"codigo='{codigo}'");

// "cliente" in a card of users: operators know the text.
const QString FaltaCodigo = QStringLiteral("Código de cliente no puede estar vacío");
const QString FaltaNombre = QStringLiteral("Nombre no puede estar vacío");
const QString YaExiste = QStringLiteral("Usuario existente, imposible añadir");
constexpr Plantilla Creado(u"Se ha creado usuario {codigo}");
constexpr Plantilla Actualizado(u"Usuario {codigo} actualizado");
constexpr Plantilla PreguntaBorrar(u"¿Seguro que quiere eliminar? \r{codigo} {nombre}");
const QString TituloBorrar = QStringLiteral("Confirmación de eliminación");
// clang-format on

constexpr int EstiloBorrar = estilo::AceptarCancelar + estilo::Error + estilo::SegundoBoton;

QString TextoDe(std::span<const CampoFicha> ficha, const char* columna)
{
    const auto campo = std::ranges::find_if(ficha, [columna](const CampoFicha& c) {
        return c.Tag.compare(QLatin1StringView(columna), Qt::CaseInsensitive) == 0;
    });
    return campo == ficha.end() ? QString() : campo->texto;
}

Recordset AbreUsuario(Programa& programa, const QString& codigo)
{
    QString sql = SqlUsuario({{"codigo", codigo}});
    return AbreLectura(programa, sql, programa.ConexionLocal);
}

QString CodigoPropuesto(Programa& programa)
{
    QString sql = SqlUltimoCodigo();
    const Recordset ultimo = AbreLectura(programa, sql, programa.ConexionLocal);
    const Valor& codigo = ultimo["mcodigo"];
    return EstaVacio(codigo) ? PrimerCodigo : SiguienteCodigo(Texto(codigo));
}

bool Existe(Programa& programa, const QString& codigo)
{
    QString sql = SqlExiste({{"codigo", codigo}});
    return !AbreLectura(programa, sql, programa.ConexionLocal).Fin();
}

void Crea(Programa& programa, std::span<const CampoFicha> ficha, const QString& codigo)
{
    if (Existe(programa, codigo)) {
        programa.avisos.Muestra(YaExiste, estilo::Informacion);
        return;
    }
    InsertaFicha(programa, programa.ConexionLocal, ficha, Tabla);
    programa.avisos.Muestra(Creado({{"codigo", codigo}}), estilo::Informacion);
}

void Cambia(Programa& programa, std::span<const CampoFicha> ficha, const QString& codigo)
{
    ActualizaFicha(programa, programa.ConexionLocal, ficha, Tabla,
                   CondicionDeCodigo({{"codigo", codigo}}));
    programa.avisos.Muestra(Actualizado({{"codigo", codigo}}), estilo::Informacion);
}

} // namespace

Lectura LeeUsuario(Programa& programa, const QString& codigo)
{
    const QString completo = codigo.isEmpty() ? codigo : RellenaCeros(codigo, AnchoCodigo);
    Recordset fila = AbreUsuario(programa, completo);
    if (!fila.Fin() || !completo.isEmpty())
        return {.codigo = completo, .nuevo = fila.Fin(), .fila = std::move(fila)};
    // Behind codes that are no numbers the proposed one may be taken: it is new all the same, and
    // saving it tells so.
    const QString siguiente = CodigoPropuesto(programa);
    return {.codigo = siguiente, .nuevo = true, .fila = AbreUsuario(programa, siguiente)};
}

bool GuardaUsuario(Programa& programa, std::span<const CampoFicha> ficha, bool nuevo)
{
    const QString codigo = TextoDe(ficha, "CODIGO");
    const bool sinCodigo = codigo.isEmpty();
    if (sinCodigo || TextoDe(ficha, "NOMBRE").isEmpty()) {
        programa.avisos.Muestra(sinCodigo ? FaltaCodigo : FaltaNombre, estilo::Aviso);
        return false;
    }
    if (nuevo)
        Crea(programa, ficha, codigo);
    else
        Cambia(programa, ficha, codigo);
    return true;
}

bool BorraUsuario(Programa& programa, std::span<const CampoFicha> ficha)
{
    const QString codigo = TextoDe(ficha, "CODIGO");
    const QString pregunta =
        PreguntaBorrar({{"codigo", codigo}, {"nombre", TextoDe(ficha, "NOMBRE")}});
    if (programa.avisos.Muestra(pregunta, EstiloBorrar, TituloBorrar) != Respuesta::Aceptar)
        return false;
    QString sql = SqlBorra({{"codigo", codigo}});
    EjecutaSql(programa, sql, programa.ConexionLocal);
    return true;
}

std::optional<QString> UsuarioVecino(Programa& programa, Sentido sentido, const QString& codigo)
{
    const auto vecino = FichaVecina(programa, programa.ConexionLocal, sentido,
                                    {.campo = QStringLiteral("codigo"), .tabla = Tabla}, codigo);
    return vecino ? std::optional(Texto(*vecino)) : std::nullopt;
}

} // namespace tolmo::users
