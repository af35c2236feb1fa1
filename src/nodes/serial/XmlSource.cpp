#include "nodes/serial/XmlSource.h"

#include "nodes/serial/Utf8.h"

#include <algorithm>
#include <cstring>

namespace Nodes {

namespace {

// Lines beyond are reported as the last counted one: nobody writes such files by hand.
constexpr std::size_t maximumLines = 16000000;

const char *describe(pugi::xml_parse_status status)
{
    switch (status) {
    case pugi::status_out_of_memory:
        return "не хватает памяти";
    case pugi::status_unrecognized_tag:
        return "недопустимый тег";
    case pugi::status_bad_pi:
        return "ошибка в инструкции обработки";
    case pugi::status_bad_comment:
        return "незакрытый комментарий";
    case pugi::status_bad_cdata:
        return "незакрытый раздел CDATA";
    case pugi::status_bad_doctype:
        return "ошибка в DOCTYPE";
    case pugi::status_bad_pcdata:
        return "ошибка в тексте элемента";
    case pugi::status_bad_start_element:
        return "ошибка в открывающем теге";
    case pugi::status_bad_attribute:
        return "ошибка в атрибуте";
    case pugi::status_bad_end_element:
        return "ошибка в закрывающем теге";
    case pugi::status_end_element_mismatch:
        return "закрывающий тег не соответствует открывающему";
    case pugi::status_no_document_element:
        return "нет ни одного элемента XML";
    default:
        return "файл не разбирается";
    }
}

XmlFault tooMuch(const char *english, const char *russian, std::size_t limit)
{
    return {Result::LimitExceeded, 0, std::string(english) + ", limit " + std::to_string(limit),
            std::string(russian) + ", предел " + std::to_string(limit)};
}

} // namespace

std::optional<XmlFault> XmlSource::checkBytes() const
{
    const std::size_t zero = m_bytes.find('\0');
    if (zero != std::string::npos)
        return XmlFault{Result::ParseError, LineAt(static_cast<std::ptrdiff_t>(zero)),
                        "binary data, not an XML text",
                        "двоичные данные вместо текста XML; восстановите файл из копии"};
    if (const auto offset = FindInvalidUtf8(m_bytes))
        return XmlFault{Result::ParseError, LineAt(static_cast<std::ptrdiff_t>(*offset)),
                        "not UTF-8", "текст не в кодировке UTF-8; пересохраните файл в UTF-8"};
    return std::nullopt;
}

// A parsed element takes ten times the bytes of its text, so a hostile file is counted first.
std::optional<XmlFault> XmlSource::checkCounts(const LoadLimits &limits) const
{
    std::size_t tags = 0;
    std::size_t assignments = 0;
    const std::size_t size = m_bytes.size();
    for (std::size_t i = 0; i + 1 < size; ++i) {
        const char c = m_bytes[i];
        if (c == '<')
            tags += m_bytes[i + 1] != '/';
        else if (c == '=')
            assignments += 1;
    }
    if (tags > limits.nodes)
        return tooMuch("too many elements", "слишком много элементов", limits.nodes);
    if (assignments > limits.attributes)
        return tooMuch("too many attributes", "слишком много атрибутов", limits.attributes);
    return std::nullopt;
}

std::optional<XmlFault> XmlSource::checkRoot() const
{
    bool isFirst = true;
    for (const pugi::xml_node &node : m_document.children()) {
        if (node.type() != pugi::node_element)
            continue;
        if (!isFirst)
            return XmlFault{Result::ParseError, LineOf(node), "second top-level element",
                            "второй элемент верхнего уровня; в файле должен быть один"};
        isFirst = false;
    }
    return std::nullopt;
}

std::optional<XmlFault> XmlSource::Parse(const LoadLimits &limits)
{
    if (m_bytes.size() > limits.fileSize)
        return tooMuch("file too large", "файл слишком велик (байт)", limits.fileSize);
    findLines();
    if (auto fault = checkBytes())
        return fault;
    if (auto fault = checkCounts(limits))
        return fault;
    const pugi::xml_parse_result parsed = m_document.load_buffer_inplace(
        m_bytes.data(), m_bytes.size(), ParseFlags, pugi::encoding_utf8);
    if (!parsed) {
        return XmlFault{Result::ParseError, LineAt(parsed.offset), parsed.description(),
                        std::string(describe(parsed.status)) +
                            "; исправьте файл или восстановите его из копии"};
    }
    return checkRoot();
}

bool XmlSource::HasDoctype() const
{
    const auto children = m_document.children();
    return std::any_of(children.begin(), children.end(), [](const pugi::xml_node &node) {
        return node.type() == pugi::node_doctype;
    });
}

// Before parsing: it overwrites line ends that follow names.
void XmlSource::findLines()
{
    const char *begin = m_bytes.data();
    const char *end = begin + m_bytes.size();
    for (const char *at = begin; at < end; ++at) {
        at = static_cast<const char *>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        if (!at || m_lineEnds.size() == maximumLines)
            return;
        m_lineEnds.push_back(static_cast<std::uint32_t>(at - begin));
    }
}

int XmlSource::LineAt(std::ptrdiff_t offset) const
{
    if (offset < 0)
        return 0;
    const auto place =
        std::lower_bound(m_lineEnds.begin(), m_lineEnds.end(), static_cast<std::size_t>(offset));
    return static_cast<int>(place - m_lineEnds.begin()) + 1;
}

} // namespace Nodes
