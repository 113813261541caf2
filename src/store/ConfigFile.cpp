#include "store/ConfigFile.h"

#include "store/TurkishCodePage.h"

#include <QFile>
#include <QSaveFile>
#include <QtEndian>
#include <bit>

using namespace Qt::StringLiterals;

namespace {

// Reads little-endian values one after another and remembers when the bytes ran out.
class RecordReader
{
public:
    explicit RecordReader(const QByteArray& bytes)
        : m_bytes(bytes)
    { }

    bool ok() const { return m_ok; }
    qsizetype position() const { return m_pos; }

    QByteArray take(qsizetype count)
    {
        if (!m_ok || count > m_bytes.size() - m_pos) {
            m_ok = false;
            return {};
        }
        const QByteArray out = m_bytes.mid(m_pos, count);
        m_pos += count;
        return out;
    }
    qint32 int32() { return qFromLittleEndian<qint32>(padded(take(4), 4).constData()); }
    qint16 int16() { return qFromLittleEndian<qint16>(padded(take(2), 2).constData()); }
    quint16 uint16() { return qFromLittleEndian<quint16>(padded(take(2), 2).constData()); }
    double float64() { return std::bit_cast<double>(qFromLittleEndian<quint64>(padded(take(8), 8).constData())); }

private:
    static QByteArray padded(QByteArray bytes, int size)
    {
        bytes.resize(size, '\0');
        return bytes;
    }

    const QByteArray& m_bytes;
    qsizetype m_pos = 0;
    bool m_ok = true;
};

void putInt32(QByteArray& out, qint32 v)
{
    char b[4];
    qToLittleEndian(v, b);
    out.append(b, 4);
}

void putInt16(QByteArray& out, qint16 v)
{
    char b[2];
    qToLittleEndian(v, b);
    out.append(b, 2);
}

void putDouble(QByteArray& out, double v)
{
    char b[8];
    qToLittleEndian(std::bit_cast<quint64>(v), b);
    out.append(b, 8);
}

// Yes/no values are stored as the old basic's booleans: -1 for yes.
void putFlag(QByteArray& out, bool on)
{
    putInt16(out, on ? -1 : 0);
}

} // namespace

ConfigFile::ReadResult ConfigFile::decode(const QByteArray& bytes)
{
    ReadResult result;
    RecordReader in(bytes);
    StationSettings s;
    s.marker = in.int32();
    s.workingMode = in.int32();
    for (qint32& w : s.watched)
        w = in.int32();
    const quint16 pathLength = in.uint16();
    s.remotePath = TurkishCodePage::decode(in.take(pathLength));
    s.language = in.int16();
    s.dailySendOn = in.int16() != 0;
    s.dailySendStamp = in.float64();
    s.dailyReceiveOn = in.int16() != 0;
    s.dailyReceiveStamp = in.float64();
    if (!in.ok()) {
        // A partial record is never taken: the station starts as not set up.
        result.status = Status::Truncated;
        result.error
            = QStringLiteral("the settings file holds %1 bytes, fewer than one whole record").arg(bytes.size());
        return result;
    }
    s.trailing = bytes.mid(in.position());
    result.status = Status::Ok;
    result.settings = s;
    return result;
}

QByteArray ConfigFile::encode(const StationSettings& s)
{
    const QByteArray path = TurkishCodePage::encode(s.remotePath).left(0xFFFF);
    QByteArray out;
    out.reserve(FixedSize + path.size() + s.trailing.size());
    putInt32(out, s.marker);
    putInt32(out, s.workingMode);
    for (const qint32 w : s.watched)
        putInt32(out, w);
    putInt16(out, static_cast<qint16>(static_cast<quint16>(path.size())));
    out.append(path);
    putInt16(out, s.language);
    putFlag(out, s.dailySendOn);
    putDouble(out, s.dailySendStamp);
    putFlag(out, s.dailyReceiveOn);
    putDouble(out, s.dailyReceiveStamp);
    out.append(s.trailing);
    return out;
}

ConfigFile::ReadResult ConfigFile::read(const QString& path)
{
    QFile file(path);
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly)) {
        ReadResult result;
        result.status = Status::Unreadable;
        result.error = file.errorString();
        return result;
    }
    return decode(file.readAll());
}

bool ConfigFile::write(const QString& path, const StationSettings& settings, QString* error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    const QByteArray bytes = encode(settings);
    if (file.write(bytes) != bytes.size() || !file.commit()) {
        if (error)
            *error = file.errorString();
        file.cancelWriting();
        return false;
    }
    return true;
}

bool ConfigFile::update(const QString& path, const std::function<void(StationSettings&)>& change,
                        StationSettings* written, QString* error)
{
    ReadResult current = read(path);
    if (current.status != Status::Ok) {
        if (error)
            *error = current.error.isEmpty() ? u"The settings file holds no whole record: "_s + path : current.error;
        return false;
    }
    change(current.settings);
    if (!write(path, current.settings, error))
        return false;
    if (written)
        *written = current.settings;
    return true;
}
