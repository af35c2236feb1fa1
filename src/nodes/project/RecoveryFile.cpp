#include "nodes/project/RecoveryFile.h"

#include "nodes/project/HexDigest.h"
#include "nodes/serial/AtomicFile.h"
#include "nodes/storage/PrivateDirectory.h"
#include "nodes/values/NumberText.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include <pwd.h>
#include <unistd.h>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view signature = "operator station recovery 1";
constexpr const char *extension = ".recovery";
constexpr const char *saveNote = ".saved"; // beside the file of the unsaved work

std::string oneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

std::string takeLine(std::string_view &text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

std::string absolute(const std::string &path)
{
    std::error_code error;
    const fs::path found = fs::weakly_canonical(path, error);
    return error || found.empty() ? path : found.string();
}

// The digest covers all that stands below it.
std::string headOf(const RecoveryInfo &info)
{
    return oneLine(info.project) + "\n" + oneLine(info.name) + "\n" + oneLine(info.base) + "\n" +
           std::to_string(info.saved) + "\n";
}

std::string stemOf(const std::string &project)
{
    return HexDigest(absolute(project));
}

bool isSaved(const std::string &file)
{
    RecoveryInfo info;
    std::string text;
    std::string digest;
    return std::ifstream(file + saveNote) >> digest && RecoveryFile::Read(file, info, text) &&
           HexDigestOfFile(info.project) == digest;
}

void takeEarlier(RecoveryInfo &info)
{
    RecoveryInfo earlier;
    std::string text;
    if (!RecoveryFile::Read(info.file + ".bak", earlier, text))
        return;
    earlier.earlier = earlier.file;
    earlier.file = info.file;
    info = earlier;
}

} // namespace

std::string RecoveryFile::DefaultDirectory()
{
    const char *state = std::getenv("XDG_STATE_HOME");
    const char *home = std::getenv("HOME");
    if (!home || !*home) {
        const passwd *user = ::getpwuid(::getuid());
        home = user ? user->pw_dir : "/var/tmp";
    }
    const fs::path base = state && *state ? fs::path(state) : fs::path(home) / ".local/state";
    return (base / "operatorstation" / "recovery").string();
}

std::string RecoveryFile::FreeName(const std::string &directory, const std::string &project)
{
    const std::string stem = (fs::path(directory) / stemOf(project)).string();
    std::error_code error;
    std::string name = stem + extension;
    for (int i = 2; fs::exists(name, error); ++i)
        name = stem + "-" + std::to_string(i) + extension;
    return name;
}

Result RecoveryFile::Write(const RecoveryInfo &info, std::string_view text)
{
    const Result made = PrivateDirectory::Make(fs::path(info.file).parent_path().string());
    if (!made)
        return made;
    std::string body = headOf(info);
    body.append(text);
    return ReplaceFile(info.file, std::string(signature) + "\n" + HexDigest(body) + "\n" + body);
}

Result RecoveryFile::Read(const std::string &file, RecoveryInfo &info, std::string &text)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return {Result::NotFound, file + ": no such file"};
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    std::string_view rest = bytes;
    const bool isOurs = takeLine(rest) == signature;
    const std::string digest = takeLine(rest);
    const bool isWhole = isOurs && digest == HexDigest(rest);
    info.file = file;
    info.project = isOurs ? takeLine(rest) : std::string();
    info.name = takeLine(rest);
    info.base = takeLine(rest);
    info.saved = Timestamp(ParseInteger(takeLine(rest)).value_or(0));
    info.damage = isWhole ? std::string() : "файл несохранённой работы повреждён: " + file;
    if (!isWhole)
        return {Result::ParseError, file + ": damaged"};
    text = rest;
    return {};
}

std::vector<RecoveryInfo> RecoveryFile::List(const std::string &directory,
                                             const std::string &project)
{
    std::vector<RecoveryInfo> found;
    std::error_code error;
    const std::string stem = project.empty() ? std::string() : stemOf(project);
    for (const fs::directory_entry &entry : fs::directory_iterator(directory, error)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() != extension || name.compare(0, stem.size(), stem) != 0)
            continue;
        RecoveryInfo info;
        std::string text;
        if (!Read(entry.path().string(), info, text))
            takeEarlier(info); // else the damage is told in the info
        found.push_back(std::move(info));
    }
    std::sort(found.begin(), found.end(), [](const RecoveryInfo &left, const RecoveryInfo &right) {
        return left.damage.empty() != right.damage.empty() ? left.damage.empty()
                                                           : left.saved > right.saved;
    });
    return found;
}

void RecoveryFile::Remove(const std::string &file)
{
    std::error_code error;
    fs::remove(file, error);
    fs::remove(file + ".bak", error);
    fs::remove(file + saveNote, error);
}

Result RecoveryFile::MoveTo(const RecoveryInfo &info, const std::string &projectFile)
{
    std::error_code error;
    if (fs::exists(fs::symlink_status(projectFile, error)))
        return {Result::Duplicate, projectFile + " exists already"};
    RecoveryInfo found;
    std::string text;
    Result done = Read(info.earlier.empty() ? info.file : info.earlier, found, text);
    if (done)
        done = ReplaceFile(projectFile, text);
    if (done)
        Remove(info.file);
    return done;
}

void RecoveryFile::NoteSave(const std::string &file, const std::string &digest)
{
    std::error_code error;
    if (digest.empty())
        fs::remove(file + saveNote, error);
    else if (PrivateDirectory::Make(fs::path(file).parent_path().string()))
        std::ofstream(file + saveNote, std::ios::trunc) << digest; // half of it equals nothing
}

void RecoveryFile::Tidy(const std::string &directory)
{
    std::error_code error;
    std::set<std::string> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(directory, error)) {
        const std::string path = entry.path().string();
        const std::size_t end = path.rfind(extension);
        if (end != std::string::npos)
            files.insert(path.substr(0, end + std::string_view(extension).size()));
    }
    for (const std::string &file : files) {
        // The first work of an editor that was killed may still be on its way.
        if (!RemoveLeftovers(file) || !fs::exists(file + saveNote, error))
            continue;
        if (!fs::exists(file, error) || isSaved(file))
            Remove(file);
    }
}

} // namespace Nodes
