#ifndef FIELDTEST_H
#define FIELDTEST_H

// Helpers shared by the tests of collection and field parameters: records written by the
// library, descriptions of fields, the independent form of a variant record, and a run
// under a bounded address space for the readers of hostile input.

#include "abstractparameterbase.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QVariant>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

namespace fieldtest {

/** The record of @p p as AbstractParameterBase::write writes it. */
inline QByteArray recordOf(const AbstractParameterBase &p, bool full)
{
    QByteArray bytes;
    QContainerPacket packet(&bytes);
    p.write(packet, full);
    return bytes;
}

/** Writes the record head of a parameter record with plain stream calls. */
inline void head(QDataStream &s, qint32 id, qint32 type, qint32 state)
{
    s << id << type << state;
}

/**
 * Writes a variant parameter's record without limits, with plain stream calls: the head,
 * the value, and the limits block as a byte 1 followed by two "absent" bytes when
 * @p limitsFlag is up, or a single byte 0 when it is down.
 */
inline void variantRecord(QDataStream &s, qint32 id, qint32 state, const QVariant &value, bool limitsFlag)
{
    head(s, id, 5, state);
    s << value;
    if (limitsFlag)
        s << qint8(1) << qint8(0) << qint8(0);
    else
        s << qint8(0);
}

/** A cell description: identifier, code and type. */
inline ParamInfo cellInfo(unsigned int id, int type, const QString &code = QStringLiteral("cell"))
{
    ParamInfo info;
    info.id = id;
    info.code = code;
    info.type = type;
    return info;
}

/** A field description of @p rows by @p columns with no cells. */
inline ParamInfo fieldInfo(unsigned int id, int rows, int columns)
{
    ParamInfo info;
    info.id = id;
    info.code = QStringLiteral("field");
    info.type = 4;
    info.rows = rows;
    info.columns = columns;
    return info;
}

/** Appends a cell at @p row, @p column to the description @p field. */
inline void addCell(ParamInfo &field, int row, int column, const ParamInfo &cell)
{
    ParamFieldElementInfo element;
    element.row = row;
    element.column = column;
    element.info = cell;
    field.elements.append(element);
}

/** Whether this build runs under AddressSanitizer, which needs its own address space. */
constexpr bool underAddressSanitizer()
{
#if defined(__SANITIZE_ADDRESS__)
    return true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    return true;
#else
    return false;
#endif
#else
    return false;
#endif
}

/**
 * Limits the address space of the calling process to what it uses now plus
 * @p headroomMegabytes, so that an allocation for a hostile count fails there and then.
 */
inline void limitAddressSpace(long headroomMegabytes)
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    long pages = 0;
    if (statm.open(QIODevice::ReadOnly))
        pages = QByteArray(statm.readAll()).split(' ').value(0).toLong();
    const rlim_t limit = rlim_t(pages) * rlim_t(sysconf(_SC_PAGESIZE)) + rlim_t(headroomMegabytes) * 1024 * 1024;
    const rlimit bound{limit, limit};
    setrlimit(RLIMIT_AS, &bound);
}

/**
 * Runs @p check in a child process whose address space is bounded to what it uses now
 * plus 256 MB, and expects it to return true: an allocation sized by a hostile count
 * would fail there and abort the child. Under AddressSanitizer, which needs its own
 * address space, the check runs here without the bound.
 */
inline void expectWithinBoundedMemory(const std::function<bool()> &check)
{
    if (underAddressSanitizer()) {
        EXPECT_TRUE(check());
        return;
    }
    EXPECT_EXIT(
        {
            limitAddressSpace(256);
            std::_Exit(check() ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace fieldtest

#endif // FIELDTEST_H
