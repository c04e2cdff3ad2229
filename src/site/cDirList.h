#pragma once
#include <QDateTime>
#include <QString>
#include <deque>

namespace tolmo::site {

/// One entry of a listing of the server. A date that the server doesn't tell is invalid.
struct cDirItem {
    bool ReadOnly = false;
    bool Hidden = false;
    bool System = false;
    bool Directory = false;
    bool Archive = false;
    bool Normal = false;
    bool Temporary = false;
    bool Compressed = false;
    bool Offline = false;
    QDateTime CreationTime{};
    QDateTime LastAccessTime{};
    QDateTime LastWriteTime{};
    qint32 FileSize = 0; ///< bytes, the low 32 bits of them
    QString Filename{};
};

/// The entries of one listing, in the server's order.
class cDirList {
  public:
    using Iterador = std::deque<cDirItem>::const_iterator;

    /// Puts an entry behind the others. `lAttrib` holds the attributes by bit: ReadOnly 0, Hidden
    /// 1, System 2, Directory 4, Archive 5, Normal 7, Temporary 8, Compressed 11, Offline 12. The
    /// reference holds until the entry is removed.
    cDirItem& Add(quint32 lAttrib, const QDateTime& dtCreationTime,
                  const QDateTime& dtLastAccessTime, const QDateTime& dtLastWriteTime,
                  qint32 lFileSize, const QString& sFilename);
    /// Removes item after item, from `Count` down.
    void Clear();
    /// The entry number `Index`, from 1 to `Count`; any other is std::out_of_range.
    const cDirItem& Item(int Index) const;
    int Count() const { return static_cast<int>(entradas_.size()); }
    /// The first entry, for walking the list; `end()` stands behind the last.
    Iterador NewEnum() const { return entradas_.begin(); }
    Iterador begin() const { return NewEnum(); }
    Iterador end() const { return entradas_.end(); }

  private:
    std::deque<cDirItem> entradas_{};
};

} // namespace tolmo::site
