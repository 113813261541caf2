#pragma once

#include <QtGlobal>

// The card number as the panels hold it: a signed 32-bit value in the user block and the door
// command. A card number from 0 to MaxCardNumber travels unchanged; anything else is refused
// where it is typed, imported or sent, never wrapped or cut into another person's card.
constexpr qint64 MaxCardNumber = 2147483647;

// True when the card number fits the panels' card field.
bool fitsCardField(qint64 cardNumber);
