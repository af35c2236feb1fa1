#include "nodes/auth/PasswordHash.h"

#include <sodium.h>

namespace Nodes {

namespace {

bool isReady()
{
    static const bool ready = sodium_init() >= 0;
    return ready;
}

bool verify(const std::string &hash, const std::string &password)
{
    return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

} // namespace

std::string MakePasswordHash(const std::string &password)
{
    char hash[crypto_pwhash_STRBYTES];
    if (!isReady() || crypto_pwhash_str(hash, password.data(), password.size(),
                                        crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                        crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        return {};
    return hash;
}

bool IsPasswordHash(const std::string &text)
{
    return text.size() < crypto_pwhash_STRBYTES && text.rfind(crypto_pwhash_STRPREFIX, 0) == 0;
}

bool MatchesPasswordHash(const std::string &hash, const std::string &password)
{
    if (!isReady())
        return false;
    if (IsPasswordHash(hash))
        return verify(hash, password);
    static const std::string decoy = MakePasswordHash("decoy");
    (void)verify(decoy, password);
    return false;
}

} // namespace Nodes
