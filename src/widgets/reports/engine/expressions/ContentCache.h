#pragma once

#include "widgets/reports/engine/expressions/ContentParser.h"
#include "widgets/reports/engine/expressions/ScriptSource.h"

#include <memory>
#include <unordered_map>

namespace LimeReport {

/// Contents and scripts taken apart, each once. References stay good.
class ContentCache
{
public:
    struct Script
    {
        ScriptSource source;
        int number = -1; ///< of the compiled one
    };

    const ContentParser::Parsed &content(const QString &content, bool isHtml);
    Script &script(const QString &script);

private:
    template <class Value> using Table = std::unordered_map<QString, Value>;

    Table<ContentParser::Parsed> m_contents;
    Table<ContentParser::Parsed> m_htmlContents;
    Table<Script> m_scripts;
};

} // namespace LimeReport
