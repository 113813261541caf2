#include "protocol/PanelTransport.h"

PanelTransport::~PanelTransport() = default;
