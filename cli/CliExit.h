#pragma once

// Exit statuses of kx410ctl, documented in its help.
namespace CliExit {
constexpr int Success = 0;
// The operation failed or stopped on a failure (a panel, the link, a refused input).
constexpr int Failed = 1;
// The command line itself is wrong.
constexpr int Usage = 2;
// The station could not start: the data folder is not set up, or the database cannot be opened.
constexpr int NotStarted = 3;
// A question needed --yes or --no, or administrator rights were missing.
constexpr int NeedsAnswer = 4;
// A question was answered No (--no) before anything was done.
constexpr int Declined = 5;
} // namespace CliExit
