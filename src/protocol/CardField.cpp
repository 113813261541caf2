#include "protocol/CardField.h"

#include <limits>

// The records that carry a card to a panel hold it as qint32.
static_assert(MaxCardNumber == std::numeric_limits<qint32>::max());

bool fitsCardField(qint64 cardNumber)
{
    return cardNumber >= 0 && cardNumber <= MaxCardNumber;
}
