#include "apps/records/StoreLocation.h"

#include <cctype>
#include <filesystem>

namespace Records {

namespace {

namespace fs = std::filesystem;

const char *fileName(StoreLocation::Kind kind)
{
    return kind == StoreLocation::Kind::Archive ? "archive.sqlite" : "journal.sqlite";
}

/// "scheme:...": whatever its kind of store makes of it. A path may begin with one letter so.
bool isConnection(const std::string &store)
{
    const std::size_t length = store.find_first_not_of("abcdefghijklmnopqrstuvwxyz");
    return length != std::string::npos && length > 1 && store[length] == ':';
}

} // namespace

std::string StoreLocation::make(const std::string &store, Kind kind)
{
    const std::string shortScheme = "postgres://";
    if (store.compare(0, shortScheme.size(), shortScheme) == 0)
        return "postgresql://" + store.substr(shortScheme.size());
    if (isConnection(store))
        return store;
    std::error_code ignored;
    const bool isDirectory = store.back() == '/' || fs::is_directory(store, ignored);
    return isDirectory ? (fs::path(store) / fileName(kind)).string() : store;
}

Nodes::Result StoreLocation::find(const std::string &store, Kind kind, std::string &location)
{
    location = make(store, kind);
    std::error_code error;
    if (isConnection(location) || fs::exists(location, error))
        return Nodes::Result();
    const std::string what = kind == Kind::Archive ? "archive" : "journal";
    const std::string why = error ? ": " + error.message() : std::string();
    return Nodes::Result(Nodes::Result::NotFound,
                         "there is no " + what + " \"" + location + "\"" + why +
                             "; name the data directory of a station, the file of its " + what +
                             ", or postgresql://user@host/database");
}

std::string StoreLocation::fileOf(const std::string &location)
{
    return isConnection(location) ? std::string() : location;
}

std::string StoreLocation::shown(const std::string &location)
{
    const std::size_t begin = location.find("://");
    if (begin == std::string::npos)
        return location;
    const std::size_t user = begin + 3;
    const std::size_t at = location.find('@', user);
    const std::size_t colon = location.find(':', user);
    const bool hasPassword = at != std::string::npos && colon < at;
    return hasPassword ? location.substr(0, colon) + ":***" + location.substr(at) : location;
}

} // namespace Records
