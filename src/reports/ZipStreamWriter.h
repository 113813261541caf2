#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <zlib.h>

class QIODevice;

// Writes a zip archive front to back onto a device that need not seek: each entry is
// compressed as it is written and its sizes follow it, so a big entry never sits in memory.
class ZipStreamWriter
{
public:
    explicit ZipStreamWriter(QIODevice* device);
    ~ZipStreamWriter();
    ZipStreamWriter(const ZipStreamWriter&) = delete;
    ZipStreamWriter& operator=(const ZipStreamWriter&) = delete;

    // Starts an entry; the previous one must be ended.
    bool begin(const QString& name);
    // Appends to the current entry.
    bool write(const char* data, qsizetype size);
    bool write(const QByteArray& data) { return write(data.constData(), data.size()); }
    bool end();
    // Writes the directory that ends the archive.
    bool finish();

    QString error() const { return m_error; }

private:
    struct Entry
    {
        QByteArray name;
        quint32 crc = 0;
        quint64 compressed = 0;
        quint64 size = 0;
        quint64 offset = 0;
    };

    bool deflateSome(const char* data, qsizetype size, int flush);
    bool put(const QByteArray& bytes);
    bool fail(const QString& why);

    QIODevice* m_device;
    QList<Entry> m_entries;
    z_stream m_zip{};
    bool m_open = false;
    quint64 m_written = 0;
    QByteArray m_out;
    QString m_error;
};
