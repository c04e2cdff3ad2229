#include "site/cDirList.h"
#include <stdexcept>

namespace tolmo::site {

cDirItem& cDirList::Add(quint32 lAttrib, const QDateTime& dtCreationTime,
                        const QDateTime& dtLastAccessTime, const QDateTime& dtLastWriteTime,
                        qint32 lFileSize, const QString& sFilename)
{
    const auto bit = [lAttrib](int numero) { return (lAttrib >> numero & 1U) != 0; };
    return entradas_.emplace_back(cDirItem{.ReadOnly = bit(0),
                                           .Hidden = bit(1),
                                           .System = bit(2),
                                           .Directory = bit(4),
                                           .Archive = bit(5),
                                           .Normal = bit(7),
                                           .Temporary = bit(8),
                                           .Compressed = bit(11),
                                           .Offline = bit(12),
                                           .CreationTime = dtCreationTime,
                                           .LastAccessTime = dtLastAccessTime,
                                           .LastWriteTime = dtLastWriteTime,
                                           .FileSize = lFileSize,
                                           .Filename = sFilename});
}

void cDirList::Clear()
{
    while (Count() > 0)
        entradas_.pop_back();
}

const cDirItem& cDirList::Item(int Index) const
{
    if (Index < 1 || Index > Count())
        throw std::out_of_range("cDirList::Item");
    return entradas_[static_cast<std::size_t>(Index) - 1];
}

} // namespace tolmo::site
