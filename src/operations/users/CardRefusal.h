#pragma once

#include "store/Message.h"

// What the person is told about a user whose stored card number does not fit the panels' card
// field: the user's ID, then " nolu kullanıcı panele gönderilemez, Kart ID hatalı!".
Message cardRefusal(qint32 userId);
