// A panel's answer text, as one exchange returned it, read by every answer reader of the user,
// clock, record count, calendar, programmed slot and reader commands.
#include "FuzzCheck.h"
#include "FuzzInput.h"
#include "protocol/AnswerReading.h"
#include "protocol/CalendarCommands.h"
#include "protocol/ReaderCommands.h"
#include "protocol/UserCommands.h"

namespace {

// Nothing that came in time is ever read as "no answer", and nothing is read from what did not.
void checkOutcome(CommandOutcome outcome, const ExchangeResult& result)
{
    FUZZ_CHECK((outcome == CommandOutcome::NoAnswer) == !result.answered);
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
    const CommandResult<UserRecord> card = InterpretReadCard(result, panel, userId);
    checkOutcome(card.outcome(), result);
    // A user handed on is the one asked for.
    if (card.isAccepted()) {
        FUZZ_CHECK(card.data().id == userId);
        FUZZ_CHECK(card.data().cardId >= 0);
        FUZZ_CHECK(result.text.contains(QByteArray('$' + panel.answerCode("UC"))));
    }

    const CommandResult<qint32> count = InterpretRecordCount(result, panel);
    checkOutcome(count.outcome(), result);
    if (count.isAccepted())
        FUZZ_CHECK(count.data() >= 0 && count.data() <= 99999);

    const CommandResult<PanelClock> clock = InterpretPanelClock(result, panel);
    checkOutcome(clock.outcome(), result);
    if (clock.isAccepted())
        FUZZ_CHECK(clock.data().text.size() == 19);
}

void readCalendarAndReaderAnswers(const ExchangeResult& result, const PanelAddress& panel)
{
    const CommandResult<QByteArray> slotText = InterpretReadSlot(result, panel);
    checkOutcome(slotText.outcome(), result);
    if (slotText.isAccepted())
        FUZZ_CHECK(slotText.data().startsWith(QByteArray('$' + panel.answerCode("ZR"))));
    ProgrammedSlot slot;
    slot.weekday = 3;
    slot.slot = 11;
    if (ParseReadSlotAnswer(slotText.data(), slot) || ParseReadSlotAnswer(result.text, slot)) {
        FUZZ_CHECK(slot.start.isValid() && slot.end.isValid());
        // Only the answer's own fields are taken; which slot was asked for stays.
        FUZZ_CHECK(slot.weekday == 3 && slot.slot == 11);
    }

    for (const char* code : { "PR", "LR" }) {
        const CommandResult<qint32> value = InterpretTwoDigitValue(result, panel.answerCode(code));
        checkOutcome(value.outcome(), result);
        if (value.isAccepted())
            FUZZ_CHECK(value.data() >= 0 && value.data() <= 99);
    }
}

void readAcknowledgements(const ExchangeResult& result, const PanelAddress& panel)
{
    using namespace AnswerReading;
    for (const char* code : { "NC", "CS", "CZ", "ZW", "MU", "PS", "LW", "EC", "DR", "ES", "EP", "RP" }) {
        const QByteArray own = panel.answerCode(code);
        const CommandOutcome accepted = acceptedByO(result, own);
        checkOutcome(accepted, result);
        if (accepted == CommandOutcome::Accepted)
            FUZZ_CHECK(result.text.contains(QByteArray('$' + own + 'O')));
        checkOutcome(echoedCode(result, own), result);
        checkOutcome(codeAnywhere(result, own), result);
        const CommandResult<QByteArray> field = textField(result, own, 9);
        checkOutcome(field.outcome(), result);
        FUZZ_CHECK(field.data().size() <= 9);
    }
    checkOutcome(anyAnswer(result), result);
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
