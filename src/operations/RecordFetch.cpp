#include "operations/RecordFetch.h"

#include "operations/RecordLookup.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

bool RecordFetch::Result::mayErasePanel() const
{
    return stored && download.mayErasePanel();
}

Message RecordFetch::waitLine(const QString& stageText, qint32 panelNumber, const QString& panelLabel)
{
    return Message(stageText)
        .add(panelLabel.isEmpty() ? u" Panel:"_s : panelLabel)
        .value(panelNumber)
        .add(RecordDownload::waitSeparator())
        .add(RecordDownload::waitText());
}

RecordFetch::Result RecordFetch::run(PanelLink& link, Database& db, qint32 panelNumber, const PanelAddress& address,
                                     const Status& status)
{
    const auto tell = [&](const Message& line) {
        if (status)
            status(line);
    };
    Result result;
    RecordLookup lookup(db);
    if (!lookup.loadUserCards(&result.error))
        return result;

    result.download = DownloadRecords(
        link, address, [&lookup](qint32 userId) { return lookup.cardOfUser(userId); },
        [&](RecordDownload::Stage stage, int) {
            tell(waitLine(RecordDownload::stageText(stage), panelNumber, RecordDownload::panelLabel(stage)));
        });

    const QString adding = u"Offline Kayıtlar Veritabanına Ekleniyor..."_s;
    tell(waitLine(adding, panelNumber));
    RecordImport import(db);
    result.stored
        = import.store(panelNumber, result.download.records, &result.import, &result.error, [&](int done, int total) {
              tell(Message(adding)
                       .add(u" Panel:"_s)
                       .value(panelNumber)
                       .add(RecordDownload::waitSeparator())
                       .add(u"Kayıt:"_s)
                       .value(done)
                       .value(u" : "_s)
                       .value(total));
          });
    return result;
}
