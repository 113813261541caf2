#pragma once

#include "operations/panels/WalkResult.h"

#include <QString>

struct OperationContext;

// The output power and the buzzer and LED of a UHF reader (1..4, the reader of that door) on the
// selected panel.
class UhfReaderOperations
{
public:
    explicit UhfReaderOperations(OperationContext& context);

    // "%PR"; the power in dBm through *power.
    WalkResult readPower(qint32 reader, qint32* power = nullptr);
    // Administrator check, the power must be a whole number 15..30 ("UHF Okuyucu çıkış gücü 15 dBm
    // - 30 dBm arasında seçilebilir"), "Çıkış gücünün değiştirilmesini onaylıyor musunuz?", "%PS".
    WalkResult setPower(qint32 reader, const QString& power);
    // "%LR"; the two settings through the pointers (on when the digit is not 0).
    WalkResult readBuzzerLed(qint32 reader, bool* buzzer = nullptr, bool* led = nullptr);
    // Administrator check, the question naming panel and reader, "%LW".
    WalkResult setBuzzerLed(qint32 reader, bool buzzer, bool led);

private:
    OperationContext& m_context;
};
