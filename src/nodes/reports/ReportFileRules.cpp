#include "nodes/reports/ReportFileRules.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/reports/time/LocalCalendar.h"
#include "nodes/system/systemCore.h"

#include <algorithm>
#include <filesystem>

namespace Nodes {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestName = 200; // bytes, of 255 that file systems take

void replaceAll(std::string &text, const std::string &from, const std::string &to)
{
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

// A name that every file system takes, cut at no half character.
std::string asFileName(std::string text)
{
    for (char &c : text) {
        if (static_cast<unsigned char>(c) < ' ' ||
            std::string("/\\:*?\"<>|").find(c) != std::string::npos)
            c = '_';
    }
    std::size_t length = std::min(text.size(), longestName);
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        --length;
    text.resize(length);
    text.erase(0, std::min(text.find_first_not_of(" ."), text.size()));
    text.erase(text.find_last_not_of(" .") + 1);
    return text.empty() ? "report" : text;
}

bool leadsUp(const fs::path &path)
{
    return std::any_of(path.begin(), path.end(), [](const fs::path &part) { return part == ".."; });
}

bool leadsOut(const fs::path &path)
{
    return path.is_absolute() || leadsUp(path);
}

} // namespace

std::string ReportFileRules::NameOf(const std::string &pattern, const std::string &report,
                                    const ReportSpan &span, const ShiftPlan &shifts)
{
    std::string name = pattern;
    const std::pair<const char *, const char *> parts[] = {{"{yyyy}", "%Y"}, {"{MM}", "%m"},
                                                           {"{dd}", "%d"},   {"{HH}", "%H"},
                                                           {"{mm}", "%M"},   {"{ww}", "%V"}};
    for (const auto &[part, format] : parts)
        replaceAll(name, part, LocalCalendar::Text(span.begin, format));
    replaceAll(name, "{shift}", shifts.At(span.begin).name);
    replaceAll(name, "{report}", report);
    return asFileName(std::move(name));
}

Result ReportFileRules::FindFolder(const ConfigNode &node, const std::string &folder,
                                   std::string &found)
{
    const systemCore *core = node.GetCore();
    if (!core)
        return Result(&node, Result::NotAvailable, "no station runs");
    std::string expanded;
    const Result named = core->Expand(folder, expanded);
    if (!named)
        return named;
    const fs::path asked(expanded);
    const bool isGiven = folder.compare(0, 2, "${") == 0 && asked.is_absolute() && !leadsUp(asked);
    if (isGiven) {
        found = asked.lexically_normal().string();
        return Result();
    }
    if (leadsOut(asked))
        return Result(&node, Result::AccessDenied, "folder = " + folder);
    found = (fs::path(core->GetDataDirectory()) / "reports" / asked).lexically_normal().string();
    return Result();
}

void ReportFileRules::CheckFolder(const ConfigNode &node, const std::string &folder,
                                  ValidationResults &results)
{
    if (folder.compare(0, 2, "${") != 0 && leadsOut(folder))
        results.Add(node.GetNodeLink(), Result(&node, Result::AccessDenied, "folder"),
                    node.GetPath() + ": папка «" + folder +
                        "» лежит вне каталога отчётов станции. Укажите путь внутри него или "
                        "имя ${...}, заданное при запуске станции.");
}

} // namespace Nodes
