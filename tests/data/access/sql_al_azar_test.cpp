#include "apoyo/carpeta.h"
#include "data/access/access.h"
#include "data/access/espejo_sqlite.h"
#include "data/access/mdb/azar.h"
#include "data/access/mdb/base_escribible.h"
#include "data/access/mdb/base_nueva.h"
#include "data/access/proveedor_access.h"
#include "data/errores.h"
#include <gtest/gtest.h>
#include <iostream>

using namespace tolmo;
using Clase = ColumnaDoble::Clase;
using Fallo = ResultadoDoble::Fallo;

namespace {

constexpr int PrimerCaracter = 0x20;
constexpr int FilasDeMas = 350;

const std::vector<TablaDoble>& Tablas()
{
    static const std::vector<TablaDoble> tablas = {
        {.nombre = "M_ALMACEN",
         .columnas = {{"ID", Clase::Contador},
                      {"CODIGO", Clase::Texto, 20, true},
                      {"NOMBRE", Clase::Texto, 120},
                      {"NOTA", Clase::Memo},
                      {"PVP", Clase::Moneda},
                      {"PESO", Clase::Doble},
                      {"ALTA", Clase::Fecha},
                      {"WEB", Clase::Logico},
                      {"UNIDADES", Clase::Entero}},
         .indices = {{"CODIGOS", "CODIGO", true},
                     {"NOMBRES", "NOMBRE DESC,PVP"},
                     {"ALTAS", "ALTA"},
                     {"PRECIOS", "PVP DESC"}}},
        {.nombre = "M_LINEA",
         .columnas = {{"DOC", Clase::Entero, 0, true},
                      {"LINEA", Clase::Corto, 0, true},
                      {"ARTICULO", Clase::Texto, 40},
                      {"CANTIDAD", Clase::Simple},
                      {"FECHA", Clase::Fecha},
                      {"OBS", Clase::Memo},
                      {"NIVEL", Clase::Byte}},
         .indices = {{"LINEAS", "DOC,LINEA DESC", true},
                     {"ARTICULOS", "ARTICULO,FECHA DESC"},
                     {"NIVELES", "NIVEL"}}},
        {.nombre = "M_SUELTA",
         .columnas = {{"TIPO", Clase::Texto, 10},
                      {"NUMERO", Clase::Entero},
                      {"DIA", Clase::Fecha},
                      {"IMPORTE", Clase::Moneda},
                      {"HECHO", Clase::Logico},
                      {"TEXTO", Clase::Memo},
                      {"OTRO", Clase::Memo}},
         .indices = {{"NUMEROS", "TIPO DESC,NUMERO", true},
                     {"DIAS", "DIA DESC,HECHO"},
                     {"IMPORTES", "IMPORTE"}}}};
    return tablas;
}

enum Cual : std::size_t { Almacen, Linea, Suelta };

/// The same statements on an Access file and on its mirror.
class Pareja {
  public:
    explicit Pareja(unsigned semilla) : azar_(semilla)
    {
        data::access::mdb::CreaBase(Ruta());
        Abre();
        for (const TablaDoble& tabla : Tablas())
            Crea(tabla);
    }

    void Paso()
    {
        if (azar_.Cada(transaccion_ ? 30 : 4))
            EmpiezaOAcaba();
        const int caso = azar_.Entre(1, 100);
        const std::size_t cual = static_cast<std::size_t>(azar_.Entre(Almacen, Suelta));
        if (Cuantas(cual) > FilasDeMas)
            BorraMuchas(cual);
        else if (caso <= 38)
            azar_.Cada(3) ? InsertaEnConjunto(cual) : Inserta(cual);
        else if (caso <= 62)
            azar_.Cada(3) ? CambiaEnConjunto(cual) : Cambia(cual);
        else if (caso <= 72)
            azar_.Cada(3) ? BorraEnConjunto(cual) : BorraUna(cual);
        else if (caso <= 80)
            CambiaMuchas(cual);
        else if (caso <= 84)
            CambiaClaves();
        else if (caso <= 87)
            CambiaConOtraTabla();
        else if (caso <= 89)
            BorraMuchas(cual);
        else if (caso <= 93)
            InsertaDeOtraTabla();
        else if (caso <= 95)
            PideLoQueNoCabe();
        else
            Cambia(cual);
    }

    /// Both hold the same, and the file is sound.
    void Compara(bool conOtraConexion)
    {
        if (transaccion_)
            EmpiezaOAcaba();
        const auto otra = AbreUna();
        data::Proveedor& base = conOtraConexion ? *otra : *base_;
        for (const TablaDoble& tabla : Tablas())
            ComparaLineas(tabla, base.Consulta("SELECT * FROM " + tabla.nombre, false));
        EXPECT_EQ(data::access::mdb::FaltasDe(data::access::mdb::Base(Ruta())), QStringList());
    }

    void Reabre()
    {
        if (transaccion_)
            EmpiezaOAcaba();
        base_.reset();
        Abre();
    }

    /// An index of a table that has rows already.
    void AnadeIndice(Cual cual, const IndiceDoble& indice)
    {
        if (transaccion_)
            EmpiezaOAcaba();
        const QString tabla = Tablas()[cual].nombre;
        base_->Ejecuta("CREATE INDEX " + indice.nombre + " ON " + tabla + " (" + indice.columnas +
                       ")");
        espejo_.CreaIndice(tabla, indice);
    }

    /// As a reader that shares no line with this engine finds it.
    void ComparaConMdbtools()
    {
        for (const TablaDoble& tabla : Tablas())
            ComparaExportada(tabla);
    }

    const QString& UltimaSentencia() const { return ultima_; }

    /// So that a change of the odds that leaves something out shows.
    void Cuenta()
    {
        std::cout << veces_[Fallo::Ninguno] << " sentencias con " << filas_ << " filas; "
                  << veces_[Fallo::Repetido] << " rechazadas por una clave y "
                  << veces_[Fallo::SinValor] << " por un Nulo\n";
        EXPECT_GT(veces_[Fallo::Repetido], 0);
        EXPECT_GT(veces_[Fallo::SinValor], 0);
    }

  private:
    QString Ruta() const { return carpeta_.Ruta("BD000001.mdb"); }

    std::unique_ptr<data::access::ProveedorAccess> AbreUna() const
    {
        return std::make_unique<data::access::ProveedorAccess>(
            std::make_unique<data::access::FicheroAccess>(Ruta()));
    }
    void Abre() { base_ = AbreUna(); }

    void Crea(const TablaDoble& tabla)
    {
        static const QHash<Clase, QString> tipos = {
            {Clase::Contador, "COUNTER CONSTRAINT P PRIMARY KEY"},
            {Clase::Entero, "INT"},
            {Clase::Corto, "SMALLINT"},
            {Clase::Byte, "BYTE"},
            {Clase::Simple, "SINGLE"},
            {Clase::Doble, "DOUBLE"},
            {Clase::Moneda, "CURRENCY"},
            {Clase::Fecha, "DATETIME"},
            {Clase::Logico, "YESNO"},
            {Clase::Texto, "nvarchar(%1)"},
            {Clase::Memo, "MEMO"}};
        QStringList columnas;
        for (const ColumnaDoble& columna : tabla.columnas) {
            QString tipo = tipos.value(columna.clase);
            tipo.replace("%1", QString::number(columna.ancho));
            columnas << columna.nombre + ' ' + tipo + (columna.obligatoria ? " NOT NULL" : "");
        }
        base_->Ejecuta("CREATE TABLE " + tabla.nombre + " (" + columnas.join(',') + ")");
        for (const IndiceDoble& indice : tabla.indices)
            base_->Ejecuta((indice.unico ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                           indice.nombre + " ON " + tabla.nombre + " (" + indice.columnas + ")");
        espejo_.Crea(tabla);
    }

    int Cuantas(std::size_t cual)
    {
        return static_cast<int>(espejo_.Numero("SELECT COUNT(*) FROM " + Tablas()[cual].nombre));
    }

    // Values.

    QString TextoAlAzar(int ancho)
    {
        // Few letters, so that many texts are the same to Access.
        static const QString pocas = QStringLiteral("aAáÁäæßsSñN n-'ÿ\u0178\u0153O\u017D");
        if (azar_.Cada(2))
            return azar_.Texto(ancho, PrimerCaracter);
        QString texto;
        for (int i = azar_.Entre(0, 3); i > 0; --i)
            texto += pocas[azar_.Entre(0, static_cast<int>(pocas.size()) - 1)];
        return texto;
    }

    QString MemoAlAzar()
    {
        QString texto = azar_.Memo(PrimerCaracter);
        if (azar_.Cada(3))
            texto.insert(texto.size() / 2, QStringLiteral("\r\n"));
        return texto;
    }

    data::Valor FechaAlAzar()
    {
        const int caso = azar_.Entre(1, 10);
        const QDate dia = caso == 1   ? QDate(azar_.Entre(100, 1899), azar_.Entre(1, 12), 28)
                          : caso == 2 ? QDate(azar_.Entre(2031, 9900), azar_.Entre(1, 12), 1)
                          : caso == 3 ? QDate(1899, 12, azar_.Entre(27, 31))
                                      : QDate(2024, 1, 1).addDays(azar_.Entre(-300, 300));
        const QTime hora(0, 0);
        return data::SinZona(dia, azar_.Cada(2) ? hora.addSecs(azar_.Entre(0, 86399)) : hora);
    }

    data::Valor Inventa(const ColumnaDoble& columna)
    {
        const bool nulo =
            columna.clase != Clase::Logico && azar_.Cada(columna.obligatoria ? 60 : 8);
        if (nulo)
            return data::Nulo();
        switch (columna.clase) {
        case Clase::Contador:
            return azar_.Entre(1, 3000);
        case Clase::Entero:
            return azar_.Cada(20) ? azar_.Entre(-2'147'483'647, 2'000'000'000)
                                  : azar_.Entre(-20, 400);
        case Clase::Corto:
            return azar_.Cada(20) ? azar_.Entre(-32'768, 32'767) : azar_.Entre(1, 20);
        case Clase::Byte:
            return azar_.Entre(0, 255);
        case Clase::Simple:
            return azar_.Entre(-4000, 400'000) / 4.0;
        case Clase::Doble:
            return azar_.Cada(10) ? QString("%1e%2")
                                        .arg(azar_.Entre(1, 99'999))
                                        .arg(azar_.Entre(-250, 250))
                                        .toDouble()
                                  : azar_.Entre(-100'000, 100'000) / 1000.0;
        case Clase::Moneda:
            return azar_.Cada(20) ? azar_.Entre(-2'000'000'000, 2'000'000'000) * 50.0
                                  : azar_.Entre(-50'000, 500'000) / 10'000.0;
        case Clase::Fecha:
            return FechaAlAzar();
        case Clase::Logico:
            return azar_.Cada(2);
        case Clase::Texto:
            return TextoAlAzar(columna.ancho);
        case Clase::Memo:
            return MemoAlAzar();
        }
        return {};
    }

    /// A value that a row has, maybe in another spelling.
    data::Valor Existente(const TablaDoble& tabla, const ColumnaDoble& columna)
    {
        const int filas = static_cast<int>(espejo_.Numero("SELECT COUNT(*) FROM " + tabla.nombre));
        const data::Valor valor =
            espejo_.Muestra(tabla, columna, azar_.Entre(0, std::max(0, filas - 1)));
        if (columna.clase != Clase::Texto || data::EsNulo(valor))
            return valor;
        const QString texto = valor.toString();
        const QString otro = (azar_.Cada(3)   ? texto.toUpper()
                              : azar_.Cada(3) ? texto.toLower()
                              : azar_.Cada(3) ? texto + "  "
                                              : texto)
                                 .left(columna.ancho);
        // The capital of some letters is none of Windows-1252.
        return data::DesdeWindows1252(data::AWindows1252(otro)) == otro ? otro : texto;
    }

    data::Valor ParaGuardar(const TablaDoble& tabla, const ColumnaDoble& columna)
    {
        const bool repite = columna.clase != Clase::Memo && azar_.Cada(6);
        return repite ? Existente(tabla, columna) : Inventa(columna);
    }

    const ColumnaDoble& ColumnaAlAzar(const TablaDoble& tabla, bool conMemos)
    {
        while (true) {
            const auto& columna = tabla.columnas[static_cast<std::size_t>(
                azar_.Entre(0, static_cast<int>(tabla.columnas.size()) - 1))];
            if (conMemos || columna.clase != Clase::Memo)
                return columna;
        }
    }

    // Conditions.

    void PonCondicionDe(FraseDoble& frase, const TablaDoble& tabla)
    {
        const ColumnaDoble& columna = ColumnaAlAzar(tabla, false);
        const data::Valor valor = azar_.Cada(4) ? Inventa(columna) : Existente(tabla, columna);
        frase << columna.nombre;
        if (data::EsNulo(valor)) {
            frase << (azar_.Cada(2) ? " IS NULL" : " IS NOT NULL");
            return;
        }
        const bool ordenada = columna.clase != Clase::Texto && columna.clase != Clase::Logico;
        const int caso = azar_.Entre(1, 6);
        if (columna.clase == Clase::Texto && caso <= 2) {
            const QChar letra(u'a' + azar_.Entre(0, 25));
            frase.Segun(QString(" LIKE '") + letra + "%'", QString(" LIKE '") + letra + "%'");
        } else if (ordenada && caso <= 3) {
            const QString desde = azar_.Cada(2) ? ">=" : ">";
            (frase << desde).Valor(columna, valor)
                << " AND " << columna.nombre << (azar_.Cada(2) ? "<=" : "<");
            const data::Valor hasta = Existente(tabla, columna);
            frase.Valor(columna, data::EsNulo(hasta) ? valor : hasta);
        } else if (ordenada && caso == 4) {
            (frase << (azar_.Cada(2) ? "<" : ">")).Valor(columna, valor);
        } else if (caso == 5) {
            (frase << " IN (").Valor(columna, valor) << ",";
            const data::Valor otro = Existente(tabla, columna);
            frase.Valor(columna, data::EsNulo(otro) ? valor : otro) << ")";
        } else {
            (frase << (azar_.Cada(6) ? "<>" : "=")).Valor(columna, valor);
        }
    }

    void PonDonde(FraseDoble& frase, const TablaDoble& tabla)
    {
        frase << " WHERE ";
        PonCondicionDe(frase, tabla);
        if (!azar_.Cada(3))
            return;
        frase << " AND ";
        PonCondicionDe(frase, tabla);
    }

    /// One row, or a few.
    void PonDondeUna(FraseDoble& frase, std::size_t cual)
    {
        const TablaDoble& tabla = Tablas()[cual];
        const auto fila = espejo_.Fila(tabla, azar_.Entre(0, std::max(0, Cuantas(cual) - 1)));
        const std::size_t columnas = cual == Almacen ? 1 : 2;
        frase << " WHERE ";
        for (std::size_t i = 0; i < columnas; ++i) {
            frase << (i > 0 ? " AND " : "") << tabla.columnas[i].nombre;
            if (data::EsNulo(fila[i]))
                frase << " IS NULL";
            else
                (frase << "=").Valor(tabla.columnas[i], fila[i]);
        }
    }

    // Statements.

    void Ejecuta(const FraseDoble& frase, bool deUnaFila = false)
    {
        ultima_ = frase.access;
        ResultadoDoble real;
        try {
            real.filas = base_->Ejecuta(frase.access);
        } catch (const data::ErrorSql& error) {
            real = Rechazo(error);
        }
        CompruebaIgual(real, espejo_.Ejecuta(frase), deUnaFila);
    }

    static ResultadoDoble Rechazo(const data::ErrorSql& error)
    {
        const QString descripcion = error.Descripcion();
        const Fallo fallo = descripcion.contains("duplicado en un índice único") ? Fallo::Repetido
                            : descripcion.contains("no puede quedar sin valor")  ? Fallo::SinValor
                                                                                 : Fallo::Otro;
        return {.fallo = fallo, .descripcion = descripcion};
    }

    void CompruebaIgual(const ResultadoDoble& real, const ResultadoDoble& espejo, bool deUnaFila)
    {
        ASSERT_EQ(real.fallo == Fallo::Ninguno, espejo.fallo == Fallo::Ninguno)
            << real.descripcion.toStdString() << " / " << espejo.descripcion.toStdString();
        ASSERT_NE(real.fallo, Fallo::Otro) << real.descripcion.toStdString();
        if (deUnaFila || real.fallo == Fallo::Ninguno) {
            ASSERT_EQ(real.fallo, espejo.fallo) << espejo.descripcion.toStdString();
        }
        ASSERT_EQ(real.filas, espejo.filas);
        ++veces_[real.fallo];
        filas_ += real.filas;
    }

    void Inserta(std::size_t cual)
    {
        const TablaDoble& tabla = Tablas()[cual];
        FraseDoble frase("INSERT INTO " + tabla.nombre + " (");
        std::vector<const ColumnaDoble*> columnas;
        for (const ColumnaDoble& columna : tabla.columnas) {
            if (columna.clase == Clase::Contador ? azar_.Cada(40) : !azar_.Cada(8))
                columnas.push_back(&columna);
        }
        if (columnas.empty())
            columnas.push_back(&tabla.columnas.back());
        for (const ColumnaDoble* columna : columnas)
            frase << (columna == columnas[0] ? "" : ",") << columna->nombre;
        frase << ") VALUES (";
        for (const ColumnaDoble* columna : columnas) {
            frase << (columna == columnas[0] ? "" : ",");
            frase.Valor(*columna, ParaGuardar(tabla, *columna));
        }
        Ejecuta(frase << ")", true);
    }

    void Cambia(std::size_t cual)
    {
        const TablaDoble& tabla = Tablas()[cual];
        FraseDoble frase("UPDATE " + tabla.nombre + " SET ");
        PonCambios(frase, tabla);
        PonDondeUna(frase, cual);
        Ejecuta(frase);
    }

    void PonCambios(FraseDoble& frase, const TablaDoble& tabla)
    {
        bool primero = true;
        for (const ColumnaDoble& columna : tabla.columnas) {
            const bool ultima = &columna == &tabla.columnas.back();
            if (columna.clase == Clase::Contador || !(azar_.Cada(3) || (primero && ultima)))
                continue;
            frase << (primero ? "" : ",") << columna.nombre << "=";
            frase.Valor(columna, ParaGuardar(tabla, columna));
            primero = false;
        }
    }

    void BorraUna(std::size_t cual)
    {
        FraseDoble frase("DELETE FROM " + Tablas()[cual].nombre);
        PonDondeUna(frase, cual);
        Ejecuta(frase);
    }

    void CambiaMuchas(std::size_t cual)
    {
        const TablaDoble& tabla = Tablas()[cual];
        FraseDoble frase("UPDATE " + tabla.nombre + " SET ");
        const ColumnaDoble& columna = ColumnaAlAzar(tabla, true);
        frase << columna.nombre << "=";
        const int mas = azar_.Entre(1, 9);
        switch (columna.clase) {
        case Clase::Memo:
            frase.Segun(columna.nombre + " & 'añadido'",
                        "ifnull(" + columna.nombre + ",'') || 'añadido'");
            break;
        case Clase::Moneda:
            frase.Segun(QString("%1+%2.25").arg(columna.nombre).arg(mas),
                        QString("%1+%2").arg(columna.nombre).arg(10'000 * mas + 2500));
            break;
        case Clase::Doble:
        case Clase::Simple:
            frase << QString("%1+%2.5").arg(columna.nombre).arg(mas);
            break;
        case Clase::Fecha:
            frase.Segun(QString("DATEADD('d',%1,%2)").arg(mas).arg(columna.nombre),
                        QString("datetime(%2,'+%1 days')").arg(mas).arg(columna.nombre));
            break;
        case Clase::Contador:
        case Clase::Texto:
        case Clase::Logico:
        case Clase::Entero:
        case Clase::Corto:
        case Clase::Byte:
            if (columna.clase == Clase::Contador)
                return;
            frase.Valor(columna, ParaGuardar(tabla, columna));
        }
        PonDonde(frase, tabla);
        Ejecuta(frase);
    }

    /// Of unique indexes. Whether it is refused doesn't depend on the order of the rows: what rows
    /// get, no row of the statement has that doesn't get it too.
    void CambiaClaves()
    {
        FraseDoble frase;
        switch (azar_.Entre(1, 3)) {
        case 1:
            frase.Segun("UPDATE M_ALMACEN SET CODIGO='X' & MID(CODIGO,2)",
                        "UPDATE M_ALMACEN SET CODIGO='X' || substr(CODIGO,2)");
            PonDonde(frase, Tablas()[Almacen]);
            break;
        case 2:
            frase << "UPDATE M_LINEA SET DOC=DOC+1000 WHERE DOC>="
                  << QString::number(azar_.Entre(0, 900)) << " AND DOC<"
                  << QString::number(azar_.Entre(0, 1000));
            break;
        default:
            frase << "UPDATE M_SUELTA SET NUMERO=NUMERO+500 WHERE NUMERO>=0 AND NUMERO<"
                  << QString::number(azar_.Entre(1, 500));
        }
        Ejecuta(frase);
    }

    void CambiaConOtraTabla()
    {
        FraseDoble frase;
        if (azar_.Cada(2)) {
            frase.Segun(
                "UPDATE M_LINEA INNER JOIN M_ALMACEN ON M_LINEA.DOC=M_ALMACEN.ID SET M_LINEA.ARTICULO=LEFT(M_ALMACEN.NOMBRE,40),M_LINEA.OBS=M_ALMACEN.NOTA WHERE M_LINEA.LINEA<",
                "UPDATE M_LINEA SET ARTICULO=substr(A.NOMBRE,1,40),OBS=A.NOTA FROM M_ALMACEN AS A WHERE DOC=A.ID AND LINEA<");
            frase << QString::number(azar_.Entre(0, 10));
        } else {
            frase << "DELETE FROM M_LINEA WHERE DOC IN (SELECT ID FROM M_ALMACEN WHERE PVP>";
            frase.Valor(Tablas()[Almacen]["PVP"], azar_.Entre(20, 60) * 1.0) << ")";
        }
        Ejecuta(frase);
    }

    void BorraMuchas(std::size_t cual)
    {
        static const char* const numeros[] = {"ID", "DOC", "NUMERO"};
        FraseDoble frase("DELETE FROM " + Tablas()[cual].nombre + " WHERE ");
        const bool sobran = Cuantas(cual) > FilasDeMas;
        const QString entre = sobran ? "3" : "10";
        const QString resto = QString::number(azar_.Entre(0, sobran ? 2 : 9));
        frase.Segun(numeros[cual] + QString(" MOD ") + entre + "=" + resto,
                    numeros[cual] + QString(" % ") + entre + "=" + resto);
        if (cual == Suelta && azar_.Cada(3))
            frase << " OR NUMERO IS NULL";
        Ejecuta(frase);
    }

    void InsertaDeOtraTabla()
    {
        FraseDoble frase;
        switch (azar_.Entre(1, 4)) {
        case 1:
            frase.Segun(
                "INSERT INTO M_LINEA (DOC,LINEA,ARTICULO,FECHA,OBS) SELECT ID,21,LEFT(NOMBRE,40),ALTA,NOTA FROM M_ALMACEN",
                "INSERT INTO M_LINEA (DOC,LINEA,ARTICULO,FECHA,OBS) SELECT ID,21,substr(NOMBRE,1,40),ALTA,NOTA FROM M_ALMACEN");
            PonDonde(frase, Tablas()[Almacen]);
            break;
        case 2:
            frase.Segun(
                "INSERT INTO M_ALMACEN (CODIGO,NOMBRE,ALTA) SELECT 'K' & DOC & '/' & LINEA,ARTICULO,FECHA FROM M_LINEA",
                "INSERT INTO M_ALMACEN (CODIGO,NOMBRE,ALTA) SELECT 'K' || DOC || '/' || LINEA,ARTICULO,FECHA FROM M_LINEA");
            PonDonde(frase, Tablas()[Linea]);
            // The order decides who gets which number.
            frase << " ORDER BY DOC,LINEA";
            break;
        case 3:
            frase.Segun(
                "INSERT INTO M_SUELTA SELECT TIPO,NUMERO+1000 AS NUMERO,DIA,IMPORTE,HECHO,TEXTO FROM M_SUELTA",
                "INSERT INTO M_SUELTA (TIPO,NUMERO,DIA,IMPORTE,HECHO,TEXTO) SELECT TIPO,NUMERO+1000,DIA,IMPORTE,HECHO,TEXTO FROM M_SUELTA");
            PonDonde(frase, Tablas()[Suelta]);
            frase << " AND NUMERO<100000";
            break;
        default:
            frase.Segun(
                "INSERT INTO M_SUELTA (TIPO,NUMERO,IMPORTE,HECHO) SELECT LEFT(A.CODIGO,10),L.DOC,A.PVP,A.WEB FROM M_ALMACEN AS A INNER JOIN M_LINEA AS L ON A.ID=L.DOC WHERE L.LINEA<",
                "INSERT INTO M_SUELTA (TIPO,NUMERO,IMPORTE,HECHO) SELECT substr(A.CODIGO,1,10),L.DOC,A.PVP,A.WEB FROM M_ALMACEN AS A INNER JOIN M_LINEA AS L ON A.ID=L.DOC WHERE L.LINEA<");
            frase << QString::number(azar_.Entre(1, 8));
        }
        Ejecuta(frase);
    }

    void PideLoQueNoCabe()
    {
        static const QStringList malas = {
            "INSERT INTO M_LINEA (DOC,LINEA) VALUES (1,40000)",
            "INSERT INTO M_ALMACEN (CODIGO) VALUES ('un código de más de veinte letras')",
            "UPDATE M_LINEA SET NIVEL=NIVEL+300 WHERE NIVEL IS NOT NULL",
            "UPDATE M_ALMACEN SET ALTA='no es una fecha'",
            "UPDATE M_ALMACEN SET ID=ID+1",
            "UPDATE M_ALMACEN SET UNIDADES=3000000000"};
        ultima_ = malas[azar_.Entre(0, static_cast<int>(malas.size()) - 1)];
        const bool hayFilas = Cuantas(Almacen) > 0 && Cuantas(Linea) > 5;
        if (hayFilas) {
            EXPECT_THROW(base_->Ejecuta(ultima_), data::ErrorSql);
        }
    }

    // Open record sets.

    struct Conjunto {
        data::Filas filas{};
        FraseDoble donde{};
    };

    /// One row, told by its key. The loose table has none.
    std::optional<Conjunto> AbreConjunto(std::size_t cual)
    {
        if (cual == Suelta || Cuantas(cual) == 0)
            return std::nullopt;
        Conjunto conjunto;
        PonDondeUna(conjunto.donde, cual);
        ultima_ = "SELECT * FROM " + Tablas()[cual].nombre + conjunto.donde.access;
        conjunto.filas = base_->Consulta(ultima_, true);
        EXPECT_EQ(conjunto.filas.claves.size(), 1U);
        return conjunto;
    }

    void EjecutaEnConjunto(const std::function<void()>& accion, const FraseDoble& frase)
    {
        ultima_ = "(conjunto) " + frase.access;
        ResultadoDoble real{.filas = 1};
        try {
            accion();
        } catch (const data::ErrorSql& error) {
            real = Rechazo(error);
        }
        CompruebaIgual(real, espejo_.Ejecuta(frase), true);
    }

    void InsertaEnConjunto(std::size_t cual)
    {
        const TablaDoble& tabla = Tablas()[cual];
        const data::Filas filas =
            base_->Consulta("SELECT * FROM " + tabla.nombre + " WHERE FALSE", true);
        data::Cambios cambios;
        FraseDoble valores(") VALUES (");
        QStringList nombres;
        for (const ColumnaDoble& columna : tabla.columnas) {
            if (columna.clase == Clase::Contador)
                continue;
            cambios.emplace_back(columna.nombre, ParaGuardar(tabla, columna));
            valores << (nombres.isEmpty() ? "" : ",");
            valores.Valor(columna, cambios.back().second);
            nombres << columna.nombre;
        }
        FraseDoble frase("INSERT INTO " + tabla.nombre + " (" + nombres.join(','));
        frase.Segun(valores.access, valores.espejo) << ")";
        frase.ligados = valores.ligados;
        EjecutaEnConjunto([&] { base_->Inserta(filas, cambios); }, frase);
    }

    void CambiaEnConjunto(std::size_t cual)
    {
        const auto conjunto = AbreConjunto(cual);
        if (!conjunto)
            return;
        const TablaDoble& tabla = Tablas()[cual];
        FraseDoble frase("UPDATE " + tabla.nombre + " SET ");
        data::Cambios cambios;
        for (const ColumnaDoble& columna : tabla.columnas) {
            if (columna.clase == Clase::Contador || !azar_.Cada(3))
                continue;
            frase << (cambios.empty() ? "" : ",") << columna.nombre << "=";
            cambios.emplace_back(columna.nombre, ParaGuardar(tabla, columna));
            frase.Valor(columna, cambios.back().second);
        }
        if (cambios.empty())
            return;
        frase.Segun(conjunto->donde.access, conjunto->donde.espejo);
        frase.ligados.insert(frase.ligados.end(), conjunto->donde.ligados.begin(),
                             conjunto->donde.ligados.end());
        EjecutaEnConjunto([&] { base_->Actualiza(conjunto->filas, 0, cambios); }, frase);
    }

    void BorraEnConjunto(std::size_t cual)
    {
        const auto conjunto = AbreConjunto(cual);
        if (!conjunto)
            return;
        FraseDoble frase("DELETE FROM " + Tablas()[cual].nombre);
        frase.Segun(conjunto->donde.access, conjunto->donde.espejo);
        frase.ligados = conjunto->donde.ligados;
        EjecutaEnConjunto([&] { base_->Borra(conjunto->filas, 0); }, frase);
    }

    // Transactions.

    /// Most statements are in one: each commit waits for the disk.
    void EmpiezaOAcaba()
    {
        if (!transaccion_) {
            transaccion_.emplace(base_->Motor());
            espejo_.Ejecuta("BEGIN");
            return;
        }
        const bool vale = azar_.Cada(2);
        ultima_ = vale ? "COMMIT" : "ROLLBACK";
        if (vale)
            transaccion_->Confirma();
        transaccion_.reset();
        espejo_.Ejecuta(vale ? "COMMIT" : "ROLLBACK");
    }

    // Comparisons.

    void ComparaLineas(const TablaDoble& tabla, const data::Filas& filas)
    {
        QList<QByteArray> reales;
        for (std::size_t i = 0; i < filas.valores.size(); i += tabla.columnas.size())
            reales << LineaDe(tabla.columnas, filas.valores, i);
        std::sort(reales.begin(), reales.end());
        ComparaLineas(tabla, reales, espejo_.Lineas(tabla));
    }

    /// Both are in order.
    static void ComparaLineas(const TablaDoble& tabla, const QList<QByteArray>& reales,
                              const QList<QByteArray>& esperadas)
    {
        EXPECT_EQ(reales.size(), esperadas.size()) << tabla.nombre.toStdString();
        const auto sobra = [](const QList<QByteArray>& unas, const QList<QByteArray>& otras) {
            QList<QByteArray> solas;
            std::set_difference(unas.begin(), unas.end(), otras.begin(), otras.end(),
                                std::back_inserter(solas));
            return solas.isEmpty() ? std::string()
                                   : std::to_string(solas.front().size()) + ' ' +
                                         solas.front().left(1000).toStdString();
        };
        EXPECT_EQ(sobra(reales, esperadas), "") << tabla.nombre.toStdString();
        EXPECT_EQ(sobra(esperadas, reales), "") << tabla.nombre.toStdString();
    }

    void ComparaExportada(const TablaDoble& tabla)
    {
        const QString salida = data::access::mdb::ExportaConMdbtools(
            Ruta(), tabla.nombre, {"-Q", "-d", "\x01", "-R", "\x02", "-0", "\x03"});
        QList<QByteArray> reales;
        for (const QString& fila : salida.split(u'\x02', Qt::SkipEmptyParts))
            reales << LineaExportada(fila.split(u'\x01'));
        std::sort(reales.begin(), reales.end());
        QList<QByteArray> esperadas;
        for (int i = 0; i < static_cast<int>(reales.size()); ++i) {
            QStringList celdas;
            const auto fila = espejo_.Fila(tabla, i);
            for (std::size_t c = 0; c < fila.size(); ++c)
                celdas << Exportado(tabla.columnas[c].clase, fila[c]);
            esperadas << LineaExportada(celdas);
        }
        std::sort(esperadas.begin(), esperadas.end());
        ComparaLineas(tabla, reales, esperadas);
    }

    /// mdbtools cuts a value after 200,000 bytes, of which a character takes three at most.
    static QByteArray LineaExportada(QStringList celdas)
    {
        for (QString& celda : celdas)
            celda.truncate(60'000);
        return celdas.join(u'\x01').toUtf8();
    }

    /// As mdbtools writes a value. It doesn't tell an empty text from Null.
    static QString Exportado(Clase clase, const data::Valor& valor)
    {
        if (data::EsNulo(valor))
            return QStringLiteral("\x03");
        switch (clase) {
        case Clase::Simple:
            return QString::number(valor.toDouble(), 'g', 7);
        case Clase::Doble:
            return QString::number(valor.toDouble(), 'g', 16);
        case Clase::Moneda:
            return QString::number(valor.toDouble(), 'f', 4);
        case Clase::Fecha:
            return FechaExportada(valor.toDateTime());
        case Clase::Logico:
            return valor.toBool() ? "1" : "0";
        case Clase::Texto:
        case Clase::Memo:
            return valor.toString().isEmpty() ? "\x03" : valor.toString();
        default:
            return QString::number(valor.toInt());
        }
    }

    /// Dates before 30/12/1899 and from day 1,000,000 on are nothing to it.
    static QString FechaExportada(const QDateTime& momento)
    {
        const qint64 dias = QDate(1899, 12, 30).daysTo(momento.date());
        return dias < 0 || dias >= 1'000'000 ? QStringLiteral("1900-01-00 00:00:00")
                                             : momento.toString("yyyy-MM-dd HH:mm:ss");
    }

    CarpetaDePrueba carpeta_{};
    data::access::mdb::Azar azar_;
    EspejoSqlite espejo_{};
    std::unique_ptr<data::access::ProveedorAccess> base_{};
    std::optional<data::access::Transaccion> transaccion_{};
    QString ultima_{};
    std::map<Fallo, int> veces_{};
    long long filas_ = 0;
};

/// KOV_SQL_OPERACIONES runs more than the 10,000 operations of every day, KOV_SQL_SEMILLA others.
TEST(SqlAlAzar, UnFicheroDeAccessTieneLoMismoQueSuEspejo)
{
    const int pedidas = qEnvironmentVariableIntValue("KOV_SQL_OPERACIONES");
    const int operaciones = pedidas > 0 ? pedidas : 10'000;
    const int semilla = qEnvironmentVariableIntValue("KOV_SQL_SEMILLA") + 1;
    std::cout << operaciones << " operaciones, semilla " << semilla << '\n';
    Pareja pareja(static_cast<unsigned>(semilla));

    for (int i = 1; i <= operaciones; ++i) {
        pareja.Paso();
        if (i == operaciones / 3)
            pareja.AnadeIndice(Almacen, {"PESOS", "PESO DESC,UNIDADES"});
        if (i == operaciones / 2)
            pareja.AnadeIndice(Linea, {"FECHAS", "FECHA,DOC DESC"});
        if (i % 100 == 0)
            pareja.Compara(i % 200 == 0);
        if (i % 700 == 0)
            pareja.Reabre();
        ASSERT_FALSE(testing::Test::HasFailure())
            << i << ": " << pareja.UltimaSentencia().left(1500).toStdString();
    }
    pareja.Compara(true);
    pareja.ComparaConMdbtools();
    pareja.Cuenta();
}

} // namespace
