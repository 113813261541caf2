#include "store/LanguageDatabase.h"
