#pragma once

#include "nodes/texts/TextLanguage.h"

namespace Nodes {

/// Texts with fields in braces.
namespace FieldTexts {

struct Field
{
    std::size_t begin;  ///< of the opening mark
    std::size_t length; ///< to behind the brace; to the end of the text when it is not closed
    std::string name;
    bool isClosed;
};

/// Fields that begin with `open` ("{" or "${") and end with a brace.
NODES_EXPORT std::vector<Field> Find(const std::string &text, const std::string &open);
/// Fields that are not closed or none of the words, which are written whole, as "{shift}".
std::vector<TextProblem> Check(const std::string &text, const std::string &open,
                               const std::vector<TextWord> &words);

} // namespace FieldTexts

/// Name of the file of a report.
TextLanguage FileNameLanguage();
/// Title of the instances of a template.
TextLanguage TitleLanguage();
/// Text with ${name} of what a station is started with, in one line or in several.
TextLanguage DefineLanguage();
TextLanguage DefineLinesLanguage();
/// Formats of the labels of an axis.
TextLanguage NumberLanguage();
TextLanguage TimeLanguage();

} // namespace Nodes
