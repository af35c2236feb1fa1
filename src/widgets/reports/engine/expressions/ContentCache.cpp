#include "widgets/reports/engine/expressions/ContentCache.h"

namespace LimeReport {

const ContentParser::Parsed &ContentCache::content(const QString &content, bool isHtml)
{
    auto &table = isHtml ? m_htmlContents : m_contents;
    const auto known = table.find(content);
    if (known != table.end())
        return known->second;
    return table.emplace(content, ContentParser::parse(content, isHtml)).first->second;
}

ContentCache::Script &ContentCache::script(const QString &script)
{
    const auto known = m_scripts.find(script);
    if (known != m_scripts.end())
        return known->second;
    return m_scripts.emplace(script, Script{ScriptSource::read(script), -1}).first->second;
}

} // namespace LimeReport
