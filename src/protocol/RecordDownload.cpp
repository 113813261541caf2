#include "protocol/RecordDownload.h"

#include "protocol/CommandCatalogue.h"
#include "protocol/PanelLink.h"

bool RecordDownload::Result::mayErasePanel() const
{
    return outcome == RecordDownloadCollector::Complete && !capReached && unreadable == 0;
}

QString RecordDownload::stageText(Stage stage)
{
    switch (stage) {
    case Stage::Receiving:
        return QStringLiteral(u"Offline Kayıtlar Alınıyor...");
    case Stage::Cutting:
        return QStringLiteral(u"Offline Geçici Kayıtlar Düzenleniyor...");
    case Stage::Decoding:
        return QStringLiteral(u"Offline Gerçek Kayıtlar Oluşturuluyor...");
    case Stage::Done:
        return QStringLiteral(u"Offline Geçici Kayıtlar Düzenlendi");
    }
    return {};
}

QString RecordDownload::panelLabel(Stage stage)
{
    return stage == Stage::Done ? QStringLiteral(", Panel:") : QStringLiteral(" Panel:");
}

QString RecordDownload::waitSeparator()
{
    return QStringLiteral(",   ");
}

QString RecordDownload::waitText()
{
    return QStringLiteral(u"BEKLEYİNİZ...");
}

QByteArray RecordDownload::buildFrame(const PanelAddress& panel)
{
    return panel.request("DD");
}

RecordDownload::Result DownloadRecords(PanelLink& link, const PanelAddress& panel,
                                       const RecordDownloadCollector::CardLookup& lookup,
                                       const RecordDownload::Progress& progress)
{
    using Stage = RecordDownload::Stage;
    const auto tell = [&](Stage stage, int count) {
        if (progress)
            progress(stage, count);
    };
    const int idleMs = CommandCatalogue::info(PanelCommand::DownloadRecords).timeoutMs;

    RecordDownload::Result result;
    RecordDownloadCollector collector(panel);
    tell(Stage::Receiving, 0);
    if (!link.sendRequest(RecordDownload::buildFrame(panel)))
        return result;

    QDeadlineTimer deadline(idleMs);
    qsizetype reported = 0;
    while (!collector.ended()) {
        const QByteArray arrived = link.receiveArrival(deadline);
        if (arrived.isEmpty()) {
            if (deadline.hasExpired() || !link.isConnected())
                break;
            continue;
        }
        deadline.setRemainingTime(idleMs);
        collector.feed(arrived);
        if (collector.rawRecords().size() / 100 > reported / 100) {
            reported = collector.rawRecords().size();
            tell(Stage::Cutting, static_cast<int>(reported));
        }
    }
    collector.finish();

    tell(Stage::Decoding, static_cast<int>(collector.rawRecords().size()));
    result.outcome = collector.outcome();
    result.capReached = collector.capReached();
    result.received = static_cast<int>(collector.rawRecords().size()) + collector.overCap();
    result.unread = collector.unread();
    QList<RecordDownloadCollector::UnreadPiece> undecoded;
    result.records = collector.decode(lookup, &undecoded);
    result.unreadCount = collector.unreadCount() + static_cast<int>(undecoded.size());
    result.unreadable = collector.unreadCount();
    for (const auto& piece : undecoded) {
        if (piece.reason != RecordDownloadCollector::UnreadReason::NoUser)
            ++result.unreadable;
        if (result.unread.size() < RecordDownloadCollector::MaxUnreadKept)
            result.unread.append(piece);
    }
    tell(Stage::Done, static_cast<int>(result.records.size()));
    return result;
}
