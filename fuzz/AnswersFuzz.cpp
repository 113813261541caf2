// A panel's answer text, as one exchange returned it, read by every answer reader of the user,
// clock, record count, calendar, programmed slot and reader commands.
#include "FuzzCheck.h"
#include "FuzzInput.h"
#include "protocol/AnswerReading.h"
#include "protocol/CalendarCommands.h"
#include "protocol/ReaderCommands.h"
#include "protocol/UserCommands.h"

namespace {

bool isFailureWord(const QString& text)
{
    return text == QLatin1String("TIMEOUT") || text == QLatin1String("ERROR") || text == QLatin1String("INVALID");
}

void readNumbers(QByteArrayView text)
{
    using namespace AnswerReading;
    // Pieces of the answer as the readers take them: the digits agree with Qt's own reading.
    for (qsizetype at = 0; at < qMin<qsizetype>(text.size(), 24); at += 3) {
        const QByteArrayView piece = text.sliced(at, qMin<qsizetype>(text.size() - at, 12));
        if (const auto value = digitsValue(piece)) {
            bool ok = false;
            FUZZ_CHECK(piece.toByteArray().toLongLong(&ok) == *value && ok);
        }
        if (const auto value = hexValue(piece.first(qMin<qsizetype>(piece.size(), 8)))) {
            bool ok = false;
            FUZZ_CHECK(piece.first(qMin<qsizetype>(piece.size(), 8)).toByteArray().toUInt(&ok, 16) == *value && ok);
        }
    }
}

void readUserAnswers(const ExchangeResult& result, const PanelAddress& panel, qint32 userId)
{
    const QString card = InterpretReadCard(result, panel, userId);
    FUZZ_CHECK(result.answered || card == QLatin1String("TIMEOUT"));
    if (!isFailureWord(card)) {
        // What is handed on starts at this panel's answer, so reading it again finds the same user.
        FUZZ_CHECK(card.startsWith(QLatin1Char('$') + QString::fromLatin1(panel.answerCode("UC"))));
        UserRecord user;
        if (ParseReadCardAnswer(card, user))
            FUZZ_CHECK(user.id == userId);
    }
    UserRecord user;
    if (ParseReadCardAnswer(QString::fromLatin1(result.text), user)) {
        FUZZ_CHECK(user.cardId >= 0);
    }

    const qint32 count = InterpretRecordCount(result, panel);
    FUZZ_CHECK(count >= -1 && count <= 99998);

    const PanelClock clock = InterpretPanelClock(result, panel);
    FUZZ_CHECK((clock.status == -1) == !result.answered);
    if (clock.status == 1)
        FUZZ_CHECK(clock.text.size() == 19);
}

void readCalendarAndReaderAnswers(const ExchangeResult& result, const PanelAddress& panel)
{
    const QString slotText = InterpretReadSlot(result, panel);
    if (!isFailureWord(slotText))
        FUZZ_CHECK(slotText.startsWith(QLatin1Char('$') + QString::fromLatin1(panel.answerCode("ZR"))));
    ProgrammedSlot slot;
    slot.weekday = 3;
    slot.slot = 11;
    if (ParseReadSlotAnswer(slotText, slot) || ParseReadSlotAnswer(QString::fromLatin1(result.text), slot)) {
        FUZZ_CHECK(slot.start.isValid() && slot.end.isValid());
        // Only the answer's own fields are taken; which slot was asked for stays.
        FUZZ_CHECK(slot.weekday == 3 && slot.slot == 11);
    }

    for (const char* code : { "PR", "LR" }) {
        const qint32 value = InterpretTwoDigitValue(result, panel.answerCode(code));
        FUZZ_CHECK(value >= -1 && value <= 99);
    }
}

void readAcknowledgements(const ExchangeResult& result, const PanelAddress& panel)
{
    using namespace AnswerReading;
    for (const char* code : { "NC", "CS", "CZ", "ZW", "MU", "PS", "LW", "EC", "DR", "ES", "EP", "RP" }) {
        const QByteArray own = panel.answerCode(code);
        const qint16 accepted = acceptedByO(result, own);
        FUZZ_CHECK(result.answered ? (accepted == 1 || accepted == -1) : accepted == 0);
        if (accepted == 1)
            FUZZ_CHECK(result.text.contains(QByteArray('$' + own + 'O')));
        FUZZ_CHECK(acceptedByOOrFail(result, own) == (accepted == 1 ? 1 : -1));
        const qint16 echoed = echoedCode(result, own);
        FUZZ_CHECK(result.answered ? (echoed == 0 || echoed == 1) : echoed == -1);
        const qint16 anywhere = codeAnywhere(result, own);
        FUZZ_CHECK(result.answered ? (anywhere == 1 || anywhere == -1) : anywhere == 0);
        const QString field = textField(result, own, 9);
        FUZZ_CHECK(field == QLatin1String("ERROR") || field.size() <= 9);
    }
    FUZZ_CHECK(anyAnswer(result) == (result.answered ? 1 : 0));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const FuzzInput input(data, size, FuzzInput::Header::SplitAndPanel);
    if (!input.usable())
        return 0;
    // The control byte's lowest bit tells whether the answer came in time; the rest is the user
    // number asked for.
    const ExchangeResult result{ (input.control() & 1) != 0, input.stream().toByteArray(), 1 };
    const qint32 userId = input.control() >> 1;

    readNumbers(input.stream());
    readUserAnswers(result, input.panel(), userId);
    readCalendarAndReaderAnswers(result, input.panel());
    readAcknowledgements(result, input.panel());
    return 0;
}
