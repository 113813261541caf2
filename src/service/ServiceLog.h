#pragma once

#include <QString>

// One line per event on standard error, whole lines even when several threads log at once;
// journald stamps and keeps them when the service runs under systemd.
namespace ServiceLog {
void line(const QString& text);
}
