// The station settings file as found on disk: any bytes, read, used and written back.
#include "FuzzCheck.h"
#include "store/ConfigFile.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const ConfigFile::ReadResult read = ConfigFile::decode(bytes);
    if (read.status != ConfigFile::Status::Ok) {
        FUZZ_CHECK(read.status == ConfigFile::Status::Truncated);
        FUZZ_CHECK(size < ConfigFile::FixedSize + 0xFFFF);
        FUZZ_CHECK(read.settings == StationSettings{});
        return 0;
    }
    FUZZ_CHECK(size >= ConfigFile::FixedSize);

    // The daily times the settings window shows.
    const StationSettings& settings = read.settings;
    FUZZ_CHECK(settings.dailySendTime().isValid());
    FUZZ_CHECK(settings.dailyReceiveTime().isValid());

    // Writing the record back and reading it again changes nothing: the file a station writes
    // reads back as it was written, path characters and trailing bytes included.
    const QByteArray written = ConfigFile::encode(settings);
    const ConfigFile::ReadResult again = ConfigFile::decode(written);
    FUZZ_CHECK(again.status == ConfigFile::Status::Ok);
    FUZZ_CHECK(ConfigFile::encode(again.settings) == written);
    FUZZ_CHECK(again.settings.remotePath == settings.remotePath);
    FUZZ_CHECK(again.settings.trailing == settings.trailing);

    // Setting the daily times gives back the times set, whatever date the stamps held.
    StationSettings changed = settings;
    changed.setDailySendTime(settings.dailyReceiveTime());
    changed.setDailyReceiveTime(settings.dailySendTime());
    FUZZ_CHECK(changed.dailySendTime() == settings.dailyReceiveTime());
    FUZZ_CHECK(changed.dailyReceiveTime() == settings.dailySendTime());
    return 0;
}
