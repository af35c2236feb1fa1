#pragma once

namespace Host {

/// Reads a password from standard input, unseen when that is a terminal, and prints its hash for a
/// user's passwordHash. False after telling on stderr why there is none.
bool printPasswordHash();

} // namespace Host
