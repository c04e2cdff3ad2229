#pragma once
#include <QStringList>

/// The folders and files among which the operator chooses, by paths as the databases hold them:
/// "C:\fotos\a.jpg".
namespace tolmo::configurator {

/// The folders from which all others are reached: "C:\" for a drive, "\\srv\fotos" for a share and
/// "\" for this machine's own root, where it has one.
QStringList Raices();

/// The root that a folder lies below; "" when it lies below none.
QString RaizDe(const QString& carpeta);

/// How the operator knows a root: "C:", "\\srv\fotos", "/".
QString NombreDeRaiz(const QString& raiz);

/// A folder of this machine by the nearest root.
QString DesdeSuRaiz(const QString& carpetaLocal);

bool EstaLaCarpeta(const QString& carpeta);
bool SeLeeLaCarpeta(const QString& carpeta);

/// The path of what stands in a folder.
QString Dentro(const QString& carpeta, const QString& nombre);
/// The folder around; a root has itself.
QString Superior(const QString& carpeta);

/// What a folder holds, in order.
QStringList Subcarpetas(const QString& carpeta);
QStringList Ficheros(const QString& carpeta, const QStringList& mascaras);

/// Which files are offered, by a text such as "Imagenes (*.jpg,*.bmp)|*.jpg;*.bmp"; all of them
/// for an empty one.
class FiltroDeFicheros {
  public:
    explicit FiltroDeFicheros(const QString& texto = {});

    const QStringList& Mascaras() const { return mascaras_; }
    bool EsDeProgramas() const;
    /// A chosen file as it is given back: the path of a program stands in quotes, or its blanks
    /// would part it.
    QString Valor(const QString& ruta) const;

  private:
    QStringList mascaras_;
};

} // namespace tolmo::configurator
