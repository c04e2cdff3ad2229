// A new file beside those that Access made: what all of them have in their catalogue.
#include "data/access/mdb/base_escribible.h"
#include "data/access/mdb/catalogo.h"
#include "data/access/mdb/muestras.h"
#include "data/access/mdb/propiedades.h"
#include <QMap>
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using testing::Contains;

namespace {

const QStringList DeAccess2003{"2003-indices.mdb", "2003-numeric.mdb", "2003-overflow.mdb",
                               "2003-saved-queries.mdb"};

/// The catalogue of a file, without what differs from file to file: names of users are told by
/// what they stand for, and those of a workgroup left out.
class Catalogado {
  public:
    explicit Catalogado(const std::shared_ptr<Paginas>& paginas) : base_(paginas)
    {
        const Tabla objetos = base_.AbreTabla(QString("MSysObjects"));
        std::vector<QByteArray> duenios;
        for (Cursor cursor(objetos); cursor.Siguiente();) {
            const Fila& fila = cursor.fila();
            duenios.push_back(Como<QByteArray>(fila.Lee(objetos["Owner"])));
            if (Como<qint64>(fila.Lee(objetos["Id"])) == 2)
                motor_ = duenios.back();
        }
        for (std::size_t i = 0; i < base_.catalogo().Objetos().size(); ++i) {
            const Objeto& objeto = base_.catalogo().Objetos()[i];
            nombres_[objeto.id] = objeto.nombre;
            filas_[objeto.nombre] = QString("%1 clase %2 marcas %3 de %4")
                                        .arg(quint32(objeto.padre), 0, 16)
                                        .arg(objeto.clase)
                                        .arg(objeto.marcas, 0, 16)
                                        .arg(Papel(duenios[i]));
        }
        LeeDerechos();
    }

    const QMap<QString, QString>& Filas() const { return filas_; }
    QStringList Derechos(const QString& nombre) const
    {
        QStringList derechos = derechos_[nombre];
        derechos.sort();
        return derechos;
    }
    /// "name=value" of the object's own properties.
    QStringList Propiedades(const QString& nombre) const
    {
        const Tabla objetos = base_.AbreTabla(QString("MSysObjects"));
        QStringList propiedades;
        for (Cursor cursor(objetos); cursor.Siguiente();) {
            if (Como<QString>(cursor.fila().Lee(objetos["Name"])) != nombre)
                continue;
            const auto bytes = Como<QByteArray>(cursor.fila().Lee(objetos["LvProp"]));
            for (const Propiedad& p :
                 LeePropiedades(Bytes({reinterpret_cast<const quint8*>(bytes.data()),
                                       static_cast<std::size_t>(bytes.size())})))
                propiedades << QString("%1=%2 tipo %3 marca %4")
                                   .arg(p.nombre, QString(p.valor.toHex()))
                                   .arg(p.tipo)
                                   .arg(p.marca);
        }
        return propiedades;
    }

  private:
    QString Papel(const QByteArray& quien) const
    {
        const auto es = [&](char a, char b) {
            return quien.size() == 2 && quien[0] == (motor_[0] ^ a) && quien[1] == (motor_[1] ^ b);
        };
        if (es(0, 0))
            return "motor";
        if (es(1, 2))
            return "administrador";
        if (es(0, 2))
            return "todos";
        return es(0, 7) ? "quien crea" : "grupo";
    }

    void LeeDerechos()
    {
        const Tabla derechos = base_.AbreTabla(QString("MSysACEs"));
        for (Cursor cursor(derechos); cursor.Siguiente();) {
            const Fila& fila = cursor.fila();
            const QString papel = Papel(Como<QByteArray>(fila.Lee(derechos["SID"])));
            if (papel != "grupo")
                derechos_[nombres_[qint32(Como<qint64>(fila.Lee(derechos["ObjectId"])))]]
                    << QString("%1 %2 %3")
                           .arg(papel)
                           .arg(Como<qint64>(fila.Lee(derechos["ACM"])), 0, 16)
                           .arg(Como<bool>(fila.Lee(derechos["FInheritable"])));
        }
    }

    Base base_;
    QByteArray motor_{};
    QMap<qint32, QString> nombres_{};
    QMap<QString, QString> filas_{};
    QMap<QString, QStringList> derechos_{};
};

std::vector<Catalogado> LosDeAccess()
{
    std::vector<Catalogado> todos;
    for (const QString& muestra : DeAccess2003)
        todos.emplace_back(PaginasDe(BytesDeMuestra(muestra)));
    return todos;
}

/// The objects that all files have, but for the tables of Access's own programs, which they add to
/// a file that lacks them.
QStringList EnTodos(const std::vector<Catalogado>& todos)
{
    QStringList nombres;
    for (const QString& nombre : todos[0].Filas().keys()) {
        const bool comun = std::all_of(todos.begin(), todos.end(), [&](const Catalogado& c) {
            return c.Filas().contains(nombre);
        });
        if (comun && !nombre.startsWith("MSysNav") && !nombre.startsWith("MSysAccess"))
            nombres << nombre;
    }
    nombres.removeAll("Table1");
    return nombres;
}

TEST(CatalogoNuevo, TieneLosObjetosQueTienenTodos)
{
    const BaseEscribible nueva;
    const Catalogado nuestro(nueva.paginas());
    const auto suyos = LosDeAccess();

    EXPECT_EQ(QStringList(nuestro.Filas().keys()), EnTodos(suyos));
    for (const QString& nombre : EnTodos(suyos)) {
        for (const Catalogado& suyo : suyos)
            EXPECT_EQ(nuestro.Filas()[nombre], suyo.Filas()[nombre]) << nombre.toStdString();
    }
}

TEST(CatalogoNuevo, TieneLosDerechosDeLosDeAccess)
{
    const BaseEscribible nueva;
    const Catalogado nuestro(nueva.paginas());
    const auto suyos = LosDeAccess();

    for (const QString& nombre : EnTodos(suyos)) {
        // Of one table two of them differ.
        std::vector<QStringList> dichos;
        for (const Catalogado& suyo : suyos)
            dichos.push_back(suyo.Derechos(nombre));
        EXPECT_THAT(dichos, Contains(nuestro.Derechos(nombre))) << nombre.toStdString();
    }
}

TEST(CatalogoNuevo, TieneLasPropiedadesPorLasQueAccessPregunta)
{
    const BaseEscribible nueva;
    const Catalogado nuestro(nueva.paginas());

    for (const Catalogado& suyo : LosDeAccess()) {
        EXPECT_EQ(nuestro.Propiedades("UserDefined"), suyo.Propiedades("UserDefined"));
        EXPECT_EQ(nuestro.Propiedades("AccessLayout"), suyo.Propiedades("AccessLayout"));
        ASSERT_EQ(nuestro.Propiedades("MSysDb").size(), 1);
        EXPECT_TRUE(suyo.Propiedades("MSysDb").contains(nuestro.Propiedades("MSysDb")[0]));
    }
}

TEST(CatalogoNuevo, UnaTablaTieneLosDerechosDeUnaDeAccess)
{
    const BaseEscribible nueva;
    CreaTabla(nueva.paginas(), {.nombre = "Table1", .columnas = {{.nombre = "A"}}});
    const Catalogado nuestro(nueva.paginas());

    for (const Catalogado& suyo : LosDeAccess()) {
        if (!suyo.Filas().contains("Table1"))
            continue; // one of them has a table of another name
        EXPECT_EQ(nuestro.Filas()["Table1"], suyo.Filas()["Table1"]);
        EXPECT_EQ(nuestro.Derechos("Table1"), suyo.Derechos("Table1"));
    }
}

} // namespace
