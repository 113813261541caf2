#include "reports/ZipStreamWriter.h"

#include <QIODevice>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

// Fast compression: the spreadsheet's rows repeat a lot, level 1 keeps most of the gain.
constexpr int kLevel = 1;
constexpr int kChunk = 1 << 18;
constexpr quint32 kLimit = 0xFFFFFFFFu;
// Entries are stamped 1980-01-01 00:00, the earliest time the format holds: the same rows
// give the same file.
constexpr quint16 kDosTime = 0;
constexpr quint16 kDosDate = (1 << 5) | 1;
// Sizes after the data, names in UTF-8.
constexpr quint16 kFlags = 0x0008 | 0x0800;

void le16(QByteArray& b, quint16 v)
{
    char c[2];
    qToLittleEndian(v, c);
    b.append(c, 2);
}

void le32(QByteArray& b, quint32 v)
{
    char c[4];
    qToLittleEndian(v, c);
    b.append(c, 4);
}

} // namespace

ZipStreamWriter::ZipStreamWriter(QIODevice* device)
    : m_device(device)
{ }

ZipStreamWriter::~ZipStreamWriter()
{
    if (m_open)
        deflateEnd(&m_zip);
}

bool ZipStreamWriter::fail(const QString& why)
{
    if (m_error.isEmpty())
        m_error = why;
    return false;
}

bool ZipStreamWriter::put(const QByteArray& bytes)
{
    if (!m_error.isEmpty())
        return false;
    if (m_device->write(bytes) != bytes.size())
        return fail(u"Writing the file failed: "_s + m_device->errorString());
    m_written += quint64(bytes.size());
    return true;
}

bool ZipStreamWriter::begin(const QString& name)
{
    if (m_open)
        return fail(u"An entry is still open."_s);
    if (m_written > kLimit)
        return fail(u"The file grew past 4 GB."_s);
    Entry e;
    e.name = name.toUtf8();
    e.offset = m_written;
    e.crc = quint32(crc32(0, nullptr, 0));
    QByteArray h;
    le32(h, 0x04034b50);
    le16(h, 20);
    le16(h, kFlags);
    le16(h, 8);
    le16(h, kDosTime);
    le16(h, kDosDate);
    le32(h, 0);
    le32(h, 0);
    le32(h, 0);
    le16(h, quint16(e.name.size()));
    le16(h, 0);
    h += e.name;
    m_entries.append(e);
    m_zip = z_stream{};
    if (deflateInit2(&m_zip, kLevel, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        return fail(u"The compressor could not start."_s);
    m_open = true;
    m_out.resize(kChunk);
    return put(h);
}

bool ZipStreamWriter::deflateSome(const char* data, qsizetype size, int flush)
{
    m_zip.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data));
    m_zip.avail_in = uInt(size);
    Entry& e = m_entries.last();
    for (;;) {
        m_zip.next_out = reinterpret_cast<Bytef*>(m_out.data());
        m_zip.avail_out = uInt(m_out.size());
        const int r = deflate(&m_zip, flush);
        if (r == Z_STREAM_ERROR)
            return fail(u"The compressor failed."_s);
        const qsizetype made = m_out.size() - qsizetype(m_zip.avail_out);
        if (made > 0) {
            if (m_device->write(m_out.constData(), made) != made)
                return fail(u"Writing the file failed: "_s + m_device->errorString());
            m_written += quint64(made);
            e.compressed += quint64(made);
        }
        if (flush == Z_FINISH ? r == Z_STREAM_END : (m_zip.avail_in == 0 && m_zip.avail_out != 0))
            return true;
    }
}

bool ZipStreamWriter::write(const char* data, qsizetype size)
{
    if (!m_open || !m_error.isEmpty())
        return fail(u"No entry is open."_s);
    Entry& e = m_entries.last();
    e.crc = quint32(crc32(e.crc, reinterpret_cast<const Bytef*>(data), uInt(size)));
    e.size += quint64(size);
    return deflateSome(data, size, Z_NO_FLUSH);
}

bool ZipStreamWriter::end()
{
    if (!m_open)
        return fail(u"No entry is open."_s);
    const bool ok = deflateSome(nullptr, 0, Z_FINISH);
    deflateEnd(&m_zip);
    m_open = false;
    if (!ok)
        return false;
    const Entry& e = m_entries.last();
    if (e.size > kLimit || e.compressed > kLimit)
        return fail(u"A part of the file grew past 4 GB."_s);
    QByteArray d;
    le32(d, 0x08074b50);
    le32(d, e.crc);
    le32(d, quint32(e.compressed));
    le32(d, quint32(e.size));
    return put(d);
}

bool ZipStreamWriter::finish()
{
    if (m_open && !end())
        return false;
    const quint64 start = m_written;
    QByteArray dir;
    for (const Entry& e : m_entries) {
        le32(dir, 0x02014b50);
        le16(dir, 20);
        le16(dir, 20);
        le16(dir, kFlags);
        le16(dir, 8);
        le16(dir, kDosTime);
        le16(dir, kDosDate);
        le32(dir, e.crc);
        le32(dir, quint32(e.compressed));
        le32(dir, quint32(e.size));
        le16(dir, quint16(e.name.size()));
        le16(dir, 0);
        le16(dir, 0);
        le16(dir, 0);
        le16(dir, 0);
        le32(dir, 0);
        le32(dir, quint32(e.offset));
        dir += e.name;
    }
    if (start + quint64(dir.size()) > kLimit)
        return fail(u"The file grew past 4 GB."_s);
    le32(dir, 0x06054b50);
    le16(dir, 0);
    le16(dir, 0);
    le16(dir, quint16(m_entries.size()));
    le16(dir, quint16(m_entries.size()));
    le32(dir, 0); // the directory's size, set below
    le32(dir, quint32(start));
    le16(dir, 0);
    // The directory's size, without the end record itself (22 bytes, of which 6 follow the size).
    const quint32 dirSize = quint32(dir.size() - 22);
    qToLittleEndian(dirSize, dir.data() + dir.size() - 10);
    return put(dir);
}
