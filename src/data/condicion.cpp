#include "data/condicion.h"
#include "data/plantilla.h"
#include "data/programa.h"
#include <QHash>
#include <algorithm>

namespace tolmo::data {
namespace {

using namespace Qt::StringLiterals;

const QString Vacio = u"(VACIO)"_s;
const QString Contiene = u"Cont."_s;

// clang-format off
constexpr Plantilla MensajeLinea(u"No está permitido. Linea {linea}\r\n{motivo}");
constexpr Plantilla SqlVacio(u"{campo} {operador} NULL");
constexpr Plantilla SqlContieneVacio(u"{campo} Like NULL");
constexpr Plantilla SqlContieneCampo(u"{campo} Like '%' & {otro} & '%'");
constexpr Plantilla SqlContieneValor(u"{campo} Like '%{valor}%' ");
constexpr Plantilla CrystalContieneCampo(u"{campo} Like '*' & {otro} & '*'");
constexpr Plantilla CrystalContieneValor(u"{campo} Like '*{valor}*' ");
constexpr Plantilla CrystalVacio(u"(ISNULL({campo}))");
constexpr Plantilla CrystalNoVacio(u"(NOT ISNULL({campo}))");
constexpr Plantilla Compara(u"{campo} {operador} {valor}");
// clang-format on

QString FilaCondicion::*CampoDe(int columna)
{
    switch (columna) {
    case ConstructorCondicion::Nexo:
        return &FilaCondicion::nexo;
    case ConstructorCondicion::Condicion1:
        return &FilaCondicion::condicion1;
    case ConstructorCondicion::Operador:
        return &FilaCondicion::operador;
    case ConstructorCondicion::Condicion2:
        return &FilaCondicion::condicion2;
    default:
        return &FilaCondicion::sentencia;
    }
}

bool Empezada(const FilaCondicion& fila)
{
    return !fila.condicion1.isEmpty() || !fila.operador.isEmpty() || !fila.condicion2.isEmpty();
}

bool Vacia(const FilaCondicion& fila)
{
    return fila.nexo.isEmpty() && !Empezada(fila);
}

QString PalabraDe(const QString& nexo)
{
    static const QHash<QString, QString> palabras{{u"Y"_s, u" And "_s},
                                                  {u"O"_s, u" Or "_s},
                                                  {u"Y NO"_s, u" And Not "_s},
                                                  {u"O NO"_s, u" Or Not "_s}};
    return palabras.value(nexo);
}

} // namespace

void ConstructorCondicion::ArrayFiltro(std::span<const ColumnaGrid> columnas,
                                       std::span<const Campo> campos)
{
    entradas_.clear();
    for (const ColumnaGrid& columna : columnas) {
        const auto campo = std::find_if(campos.begin(), campos.end(), [&](const Campo& c) {
            return c.nombre.compare(columna.DataField, Qt::CaseInsensitive) == 0;
        });
        if (campo == campos.end())
            continue;
        entradas_.push_back({columna.Caption.isEmpty() ? columna.DataField : columna.Caption,
                             columna.DataField, Tipo(campo->tipo)});
    }
}

void ConstructorCondicion::ArrayDirectoFiltro(std::vector<EntradaFiltro> entradas)
{
    entradas_ = std::move(entradas);
}

QStringList ConstructorCondicion::Nexos()
{
    return {u"Y"_s, u"O"_s, u"Y NO"_s, u"O NO"_s};
}

QStringList ConstructorCondicion::Operadores()
{
    return {u"="_s, u"<"_s, u">"_s, u"<="_s, u">="_s, u"<>"_s, Contiene};
}

QStringList ConstructorCondicion::Objetos() const
{
    QStringList objetos;
    for (const EntradaFiltro& entrada : entradas_)
        objetos << entrada.caption;
    return objetos << Vacio;
}

void ConstructorCondicion::EmpiezaDeNuevo()
{
    filas_.assign(1, {});
    condicion_.clear();
}

bool ConstructorCondicion::FilaVacia(int fila) const
{
    return Vacia(filas_.at(static_cast<std::size_t>(fila)));
}

bool ConstructorCondicion::CeldaEditable(int fila, int columna)
{
    return columna < Sentencia && (fila > 0 || columna != Nexo);
}

QString ConstructorCondicion::TextoCelda(int fila, int columna) const
{
    return filas_.at(static_cast<std::size_t>(fila)).*CampoDe(columna);
}

void ConstructorCondicion::PonCelda(int fila, int columna, const QString& texto)
{
    if (!CeldaEditable(fila, columna))
        return;
    const auto indice = static_cast<std::size_t>(fila);
    filas_.at(indice).*CampoDe(columna) = texto;
    PonPalabrasPasadas(indice);
    const bool entera = Completa(indice) && Motivo(filas_[indice]).isEmpty();
    filas_[indice].sentencia = entera ? SentenciaDe(indice) : QString();
    if (indice + 1 == filas_.size() && Completa(indice))
        filas_.emplace_back();
}

void ConstructorCondicion::EliminaFila(int fila)
{
    if (fila == 0) {
        programa_.avisos.Muestra(u"No se puede eliminar la primera fila"_s, estilo::Aviso);
        return;
    }
    QuitaFila(static_cast<std::size_t>(fila));
}

bool ConstructorCondicion::CadenaInvalida()
{
    if (!QuitaUltimaAMedias())
        return true;
    for (std::size_t i = 0; i < filas_.size(); ++i) {
        const QString motivo = Vacia(filas_[i]) ? QString() : Motivo(filas_[i]);
        if (motivo.isEmpty())
            continue;
        programa_.avisos.Muestra(
            MensajeLinea({{"linea", Texto(static_cast<int>(i) + 1)}, {"motivo", motivo}}),
            estilo::Aviso);
        return true;
    }
    return false;
}

bool ConstructorCondicion::ConstruirCondicion()
{
    if (CadenaInvalida())
        return false;
    condicion_.clear();
    for (std::size_t i = 0; i < filas_.size(); ++i) {
        if (Vacia(filas_[i]))
            continue;
        filas_[i].sentencia = SentenciaDe(i);
        condicion_ += filas_[i].sentencia + u' ';
    }
    return true;
}

QString ConstructorCondicion::Resultado() const
{
    return u'(' + Recorta(condicion_) + u')';
}

QString ConstructorCondicion::ResultadoSobre(const QString& anterior) const
{
    return anterior + (anterior.isEmpty() ? QString() : u" AND "_s) + Resultado();
}

// A typed text that reads as the caption of a field is that field: the cell doesn't tell them
// apart.
const EntradaFiltro* ConstructorCondicion::Entrada(const QString& caption) const
{
    const auto entrada = std::find_if(entradas_.begin(), entradas_.end(),
                                      [&](const auto& e) { return e.caption == caption; });
    return entrada == entradas_.end() ? nullptr : &*entrada;
}

bool ConstructorCondicion::Completa(std::size_t fila) const
{
    const FilaCondicion& f = filas_[fila];
    return !f.condicion1.isEmpty() && !f.operador.isEmpty() && !f.condicion2.isEmpty() &&
           (fila == 0 || !f.nexo.isEmpty());
}

void ConstructorCondicion::PonPalabrasPasadas(std::size_t fila)
{
    FilaCondicion& f = filas_[fila];
    if (fila > 0 && f.nexo.isEmpty() && Empezada(f))
        f.nexo = Nexos().first();
    if (f.operador.isEmpty() && !f.condicion2.isEmpty())
        f.operador = Operadores().first();
}

void ConstructorCondicion::QuitaFila(std::size_t fila)
{
    const bool ultima = fila + 1 == filas_.size();
    filas_.erase(filas_.begin() + static_cast<std::ptrdiff_t>(fila));
    if (ultima)
        filas_.emplace_back();
}

bool ConstructorCondicion::QuitaUltimaAMedias()
{
    const std::size_t ultima = filas_.size() - 1;
    if (Vacia(filas_[ultima]) || Completa(ultima))
        return true;
    const Respuesta respuesta = programa_.avisos.Muestra(
        u"La última fila no está completa, ¿Eliminar?"_s, estilo::SiNo + estilo::Aviso);
    if (respuesta != Respuesta::Si)
        return false;
    QuitaFila(ultima);
    return true;
}

// The types have to agree for "Cont." too, although the comparison that comes of it is one of
// texts.
QString ConstructorCondicion::Motivo(const FilaCondicion& fila) const
{
    const EntradaFiltro* entrada = Entrada(fila.condicion1);
    if (!entrada)
        return u"La primera condición tiene que ser un campo."_s;
    if (fila.condicion2 == Vacio)
        return {};
    if (const EntradaFiltro* otra = Entrada(fila.condicion2))
        return otra->letra == entrada->letra ? QString()
                                             : u"Comparación de tipos de datos diferentes."_s;
    if (entrada->letra == Letra::Fecha && !LeeFecha(fila.condicion2).isValid())
        return u"El valor tiene que ser una fecha."_s;
    if (entrada->letra == Letra::Numero && !EsNumerico(fila.condicion2))
        return u"El valor tiene que ser un número."_s;
    return {};
}

QString ConstructorCondicion::SentenciaDe(std::size_t fila) const
{
    const QString comparacion = Comparacion(filas_[fila]);
    return fila == 0 ? comparacion : PalabraDe(filas_[fila].nexo) + comparacion;
}

QString ConstructorCondicion::Comparacion(const FilaCondicion& fila) const
{
    const EntradaFiltro& entrada = *Entrada(fila.condicion1);
    if (fila.condicion2 == Vacio)
        return ConVacio(entrada.campo, fila.operador);
    if (const EntradaFiltro* otra = Entrada(fila.condicion2))
        return ConCampo(entrada.campo, fila.operador, otra->campo);
    return ConValor(entrada, fila);
}

QString ConstructorCondicion::ConVacio(const QString& campo, const QString& operador) const
{
    if (Destino == Lenguaje::Crystal) {
        // Crystal has no sentence for the other operators: nothing is written.
        if (operador.contains(u'='))
            return CrystalVacio({{"campo", campo}});
        return operador.contains(u"<>"_s) ? CrystalNoVacio({{"campo", campo}}) : QString();
    }
    if (operador == Contiene)
        return SqlContieneVacio({{"campo", campo}});
    // Only "=" has a sense here: "<>" never matches, and "<=" and ">=" are left without their "=".
    return SqlVacio({{"campo", campo}, {"operador", operador}}).replace(u"= NULL"_s, u"IS NULL"_s);
}

QString ConstructorCondicion::ConCampo(const QString& campo, const QString& operador,
                                       const QString& otro) const
{
    if (operador != Contiene)
        return Compara({{"campo", campo}, {"operador", operador}, {"valor", otro}});
    const Plantilla& plantilla =
        Destino == Lenguaje::Crystal ? CrystalContieneCampo : SqlContieneCampo;
    return plantilla({{"campo", campo}, {"otro", otro}});
}

QString ConstructorCondicion::ConValor(const EntradaFiltro& entrada,
                                       const FilaCondicion& fila) const
{
    if (fila.operador == Contiene) {
        const Plantilla& plantilla =
            Destino == Lenguaje::Crystal ? CrystalContieneValor : SqlContieneValor;
        return plantilla({{"campo", entrada.campo}, {"valor", fila.condicion2}});
    }
    return Compara({{"campo", entrada.campo},
                    {"operador", fila.operador},
                    {"valor", PonSegunTipo(programa_.DialectoActivo, fila.condicion2, entrada.letra,
                                           Destino)}});
}

} // namespace tolmo::data
