#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/validation/TextProblem.h"
#include "nodes/values/SignalValue.h"

#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

class ConfigNode;

/// Something that may stand in a text.
struct TextWord
{
    enum enSort { Keyword, Function, Variable, Signal, Field };

    enSort sort;
    std::string text;    ///< as it is written; a signal with its quotes
    std::string meaning; ///< Russian
};

/// A value that a text is tried with.
struct TrialInput
{
    std::string name;    ///< as the text has it
    std::string meaning; ///< Russian
    enSignalValueType type;
    std::string value; ///< to begin with; its text as ConvertedTo reads it
};

/// What a text gives with the values of a trial.
struct TrialOutcome
{
    bool isDone = false;
    std::string text;                 ///< the value, or in Russian why there is none
    std::vector<std::string> steps{}; ///< Russian: what would have been done on the way
};

/// How the texts of some properties are written: expressions, scripts, texts with fields. A row of
/// a table; a property refers to it by the word of its hint. Calls take the node the text is for,
/// null when there is none. Thread of the tree; nothing outside is touched, also by a trial.
struct TextLanguage
{
    enum enForm {
        Lua,
        Braces,       ///< {name} or ${name} among other text
        NumberFormat, ///< of printf, see NumberFormat
        TimeFormat    ///< of Qt
    };

    const char *hint;
    const char *help; ///< Russian: what the text is to give and how it is written
    enForm form;
    bool isMultiLine;
    std::vector<TextWord> (*words)(const ConfigNode *node);
    std::vector<TextProblem> (*check)(const std::string &text, const ConfigNode *node);
    /// Null when a trial needs no values.
    std::vector<TrialInput> (*inputs)(const std::string &text, const ConfigNode *node);
    /// Null when only the running station knows.
    TrialOutcome (*run)(const std::string &text, const ConfigNode *node,
                        const std::vector<TrialInput> &inputs);
};

/// All of them; a language is a row there.
NODES_EXPORT const std::vector<TextLanguage> &TextLanguages();
/// Null for a hint that names none.
NODES_EXPORT const TextLanguage *FindTextLanguage(std::string_view hint);
/// By the language of that hint; nothing when it names none.
std::vector<TextProblem> FindTextProblems(std::string_view hint, const std::string &text,
                                          const ConfigNode *node);

} // namespace Nodes
