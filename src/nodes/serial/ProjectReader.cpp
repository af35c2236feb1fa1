#include "nodes/serial/ProjectReader.h"

#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/validation/FindingCode.h"
#include "nodes/serial/ElementReader.h"
#include "nodes/serial/XmlText.h"
#include "nodes/values/NumberText.h"
#include "nodes/values/Uuid.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

// A file of before projects had a UUID keeps one and the same from start to start by its name.
void readIdentity(const pugi::xml_node &root, ElementReader &reader, NodesCollection &project)
{
    const std::string uuid = root.attribute("uuid").value();
    project.SetUuid(IsUuid(uuid) ? uuid : UuidOfName(root.attribute("name").value()));
    if (!uuid.empty() && !IsUuid(uuid))
        reader.Report(LoadMessage::Error, FindingCode::BadIdentity, root,
                      "uuid=«" + uuid + "» — ожидается UUID; действует " + project.GetUuid() +
                          ", записи прежнего проекта с ним не связаны");
    const pugi::xml_attribute last = root.attribute("lastId");
    if (const auto id = ParseNodeId(last.value()))
        project.ReserveIds(*id);
    else if (last)
        reader.Report(LoadMessage::Error, FindingCode::BadIdentity, root,
                      std::string("lastId=«") + last.value() +
                          "» — ожидается целое число больше 0; номера удалённых узлов могут "
                          "повториться");
}

} // namespace

std::string ProjectReader::FileOf(const std::string &fileOrDirectory)
{
    std::error_code error;
    return fs::is_directory(fileOrDirectory, error)
               ? (fs::path(fileOrDirectory) / "project.xml").string()
               : fileOrDirectory;
}

Result ProjectReader::fail(const XmlFault &fault)
{
    m_report.Add(
        {LoadMessage::Fatal, m_file, fault.line, {}, fault.russian, 0, FindingCode::Unreadable});
    const std::string place = fault.line > 0 ? ":" + std::to_string(fault.line) : std::string();
    return Result(fault.type, m_file + place + ": " + fault.english);
}

Result ProjectReader::readBytes(const std::string &path, std::string &bytes)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status))
        return fail({Result::NotFound, 0, "no such file", "файл проекта не найден"});
    if (!fs::is_regular_file(status))
        return fail({Result::StorageError, 0, "not a regular file", "это не обычный файл"});
    const std::uintmax_t size = fs::file_size(path, error);
    if (!error && size > m_limits.fileSize)
        return fail({Result::LimitExceeded, 0,
                     "file of " + std::to_string(size) + " bytes, limit " +
                         std::to_string(m_limits.fileSize),
                     "файл слишком велик: " + std::to_string(size) + " байт, предел " +
                         std::to_string(m_limits.fileSize)});
    std::ifstream file(path, std::ios::binary);
    bytes.resize(error ? 0 : static_cast<std::size_t>(size));
    if (!file || !file.read(bytes.data(), static_cast<std::streamsize>(bytes.size())))
        return fail({Result::StorageError, 0, std::string("cannot read: ") + std::strerror(errno),
                     std::string("файл не читается: ") + std::strerror(errno)});
    return Result();
}

Result ProjectReader::ReadFile(const std::string &path, std::unique_ptr<NodesCollection> &project)
{
    m_file = path;
    std::string bytes;
    const Result read = readBytes(path, bytes);
    if (!read)
        return read;
    const Result built = ReadBuffer(std::move(bytes), path, project);
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    if (built)
        project->SetDirectory((error ? fs::path(path) : absolute).parent_path().string());
    return built;
}

Result ProjectReader::ReadBuffer(std::string bytes, const std::string &name,
                                 std::unique_ptr<NodesCollection> &project)
{
    m_file = name;
    if (m_progress && m_progress->IsCancelled())
        return fail({Result::Cancelled, 0, "cancelled", "загрузка прервана"});
    XmlSource source(std::move(bytes));
    if (const auto fault = source.Parse(m_limits))
        return fail(*fault);
    const Result known = checkFormat(source);
    return known ? build(source, project) : known;
}

Result ProjectReader::checkFormat(const XmlSource &source)
{
    if (!KindTable::Instance().Find(NodeType(NodeType::SubtypeProject)))
        return fail({Result::NotAvailable, 0,
                     "this program has no kind for the root of projects: call KindTable::Provide "
                     "or Add before reading",
                     "в программе не зарегистрированы виды узлов, прочитать нечем"});
    const pugi::xml_node root = source.GetRoot();
    const int line = source.LineOf(root);
    const std::string name = root.name();
    if (name != "project")
        return fail({Result::ParseError, line, "root element " + name + " instead of project",
                     "корневой элемент «" + name + "», а не «project»: это не файл проекта"});
    const std::string text = root.attribute("format").value();
    const auto format = ParseInteger(text);
    if (!format || *format < 1)
        return fail({Result::ParseError, line, "format=\"" + text + "\" is no format number",
                     "нет номера формата: format=«" + text + "», ожидается целое число от 1"});
    m_isNewer = *format > Format;
    if (m_isNewer && m_isLenient)
        m_report.Add({LoadMessage::Error, m_file, line, name,
                      "формат " + text + " новее поддерживаемого (" + std::to_string(Format) +
                          "): проект можно только смотреть, непонятное не показано; чтобы "
                          "изменять его, обновите программу",
                      0, FindingCode::NewerFormat});
    else if (m_isNewer)
        return fail({Result::ParseError, line,
                     "format " + text + " is newer than " + std::to_string(Format),
                     "формат " + text + " новее поддерживаемого (" + std::to_string(Format) +
                         "); обновите программу"});
    return Result();
}

Result ProjectReader::build(const XmlSource &source, std::unique_ptr<NodesCollection> &project)
{
    ElementScan scan(source.GetRoot());
    if (const pugi::xml_node deep = scan.Run(m_limits.depth))
        return fail({Result::LimitExceeded, source.LineOf(deep),
                     "elements nested deeper than " + std::to_string(m_limits.depth),
                     "вложенность больше " + std::to_string(m_limits.depth) + " уровней"});
    if (m_progress)
        m_progress->SetTotal(scan.GetCount());

    auto fresh = std::make_unique<NodesCollection>();
    fresh->ReserveIds(scan.GetHighestId());
    ElementReader reader(source, scan, *fresh, m_report, ElementReader::KeepIds);
    reader.SetFile(m_file);
    reader.SetProgress(m_progress);
    reader.SetAttributeLimit(m_limits.attributeLength);
    if (source.HasDoctype())
        reader.Report(LoadMessage::Warning, FindingCode::Doctype, source.GetRoot(),
                      "объявление DOCTYPE отброшено, сущности не раскрываются");
    readIdentity(source.GetRoot(), reader, *fresh);
    std::unique_ptr<ConfigNode> root = reader.Read(source.GetRoot());
    if (reader.GetFault())
        return fail(*reader.GetFault());
    const Result installed = fresh->SetRoot(std::move(root));
    if (!installed)
        return fail({installed.GetType(), 0, installed.GetDetail(), "повтор номера узла"});
    reader.CheckProject();
    if (m_lines)
        reader.TakeLines(*m_lines);
    // Nobody may save what was understood in part over what was written in full.
    if (m_isNewer)
        fresh->GetRoot()->AddForeignAttribute(NewerFormatKey,
                                              source.GetRoot().attribute("format").value());
    if (m_progress)
        m_progress->SetDone(scan.GetCount());
    project = std::move(fresh);
    return Result();
}

} // namespace Nodes
