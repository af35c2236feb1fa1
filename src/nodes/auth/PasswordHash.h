#pragma once

#include <string>

namespace Nodes {

/// Salted Argon2id hash in its own text form; "" when memory is short. Takes some 0.1 s and 64 MiB.
std::string MakePasswordHash(const std::string &password);
/// Takes as long for a hash that is "" or malformed, so that the time tells nothing; those match
/// no password.
bool MatchesPasswordHash(const std::string &hash, const std::string &password);
/// True for a text that looks like a hash made here.
bool IsPasswordHash(const std::string &text);

} // namespace Nodes
