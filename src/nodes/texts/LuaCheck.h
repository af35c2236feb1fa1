#pragma once

#include "nodes/texts/LuaTokens.h"
#include "nodes/texts/TextLanguage.h"

namespace Nodes {

/// What a Lua text may be.
enum class LuaForm {
    Value, ///< an expression, or a block that returns
    Block  ///< a block
};

/// Tells what is wrong with Lua texts.
namespace LuaCheck {

/// The first thing that keeps the text from being compiled; nothing when it can be.
std::vector<TextProblem> Syntax(const std::string &text, LuaForm form);
/// Names that are neither words nor given a value anywhere in the text. Remarks: they have no
/// value.
std::vector<TextProblem> UnknownNames(const std::string &text, const std::vector<TextWord> &words);

/// An argument in quotes of one of the functions, as in read("path").
struct Reference
{
    LuaToken token;
    std::string name; ///< without quotes
};
std::vector<Reference> References(const std::string &text,
                                  const std::vector<std::string_view> &functions);

/// Keywords and what every script can call.
std::vector<TextWord> CommonWords();

} // namespace LuaCheck

} // namespace Nodes
