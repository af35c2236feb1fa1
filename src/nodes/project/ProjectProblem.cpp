#include "nodes/project/ProjectProblem.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/validation/FindingCode.h"
#include "nodes/model/validation/ValidationMessage.h"
#include "nodes/serial/ElementPath.h"
#include "nodes/serial/LoadMessage.h"
#include "nodes/values/JsonText.h"

#include <algorithm>

namespace Nodes {

namespace {

// Steady words: the texts of results may change.
const char *wordOf(Result::ResultType type)
{
    switch (type) {
    case Result::Success:
        return FindingCode::Advice;
    case Result::NotFound:
        return "missing";
    case Result::WrongType:
        return "wrong-type";
    case Result::OutOfRange:
        return "out-of-range";
    case Result::Duplicate:
        return "duplicate";
    case Result::Cycle:
        return FindingCode::LinkCycle;
    default:
        return "invalid";
    }
}

bool isRemark(const std::string &code)
{
    return code == FindingCode::Advice || code == FindingCode::UnknownKind ||
           code == FindingCode::UnknownAttribute;
}

// The detail of a result may name several properties, or none.
std::string propertyOf(const Result &result, const ConfigNode *node)
{
    const std::string key = result.GetDetail().substr(0, result.GetDetail().find(','));
    const bool isKey = node && node->GetKind() && node->GetKind()->FindProperty(key);
    return isKey ? key : std::string();
}

// Kinds begin a text with the name of the node in words of their own; its path is told beside it.
std::string withoutPath(const std::string &text, const ConfigNode *node)
{
    if (!node)
        return text;
    for (const std::string &name : {node->GetPath(), node->GetName()}) {
        const std::string beginning = name + ": ";
        if (!name.empty() && text.compare(0, beginning.size(), beginning) == 0)
            return text.substr(beginning.size());
    }
    return text;
}

} // namespace

ProjectProblem ProjectProblem::Of(const LoadMessage &message)
{
    ProjectProblem problem;
    problem.severity = message.severity == LoadMessage::Warning ? Remark : Error;
    problem.code = message.code;
    problem.file = message.file;
    problem.line = message.line;
    problem.node = message.node;
    problem.path = message.path;
    problem.text = message.text;
    return problem;
}

ProjectProblem ProjectProblem::Of(const ValidationMessage &message)
{
    const ConfigNode *node = message.GetNodeLink().GetNode();
    ProjectProblem problem;
    problem.code = message.GetCode() ? message.GetCode() : wordOf(message.GetResult().GetType());
    problem.severity = message.GetResult() || isRemark(problem.code) ? Remark : Error;
    problem.node = message.GetNodeLink().GetNodeId();
    problem.path = node ? ElementPath::Of(*node) : std::string();
    problem.property = propertyOf(message.GetResult(), node);
    problem.text = withoutPath(message.GetMessageStr(), node);
    return problem;
}

std::string ProjectProblem::ToString() const
{
    std::string whole = file;
    if (line > 0)
        whole += ":" + std::to_string(line);
    for (const std::string &part : {path, text}) {
        if (!part.empty())
            whole += (whole.empty() ? "" : ": ") + part;
    }
    return whole;
}

std::string ProjectProblem::ToCompilerLine() const
{
    return file + ":" + std::to_string(std::max(line, 1)) +
           (severity == Error ? ":1: error: " : ":1: warning: ") +
           (path.empty() ? "" : path + ": ") + text + " [" + code + "]";
}

std::string ProjectProblem::ToJson() const
{
    std::string whole = std::string("{\"severity\": ") +
                        (severity == Error ? "\"error\"" : "\"remark\"") +
                        ", \"code\": " + JsonText(code) + ", \"file\": " + JsonText(file);
    if (line > 0)
        whole += ", \"line\": " + std::to_string(line);
    if (node != 0)
        whole += ", \"node\": " + std::to_string(node);
    if (!path.empty())
        whole += ", \"path\": " + JsonText(path);
    if (!property.empty())
        whole += ", \"property\": " + JsonText(property);
    return whole + ", \"text\": " + JsonText(text) + "}";
}

} // namespace Nodes
