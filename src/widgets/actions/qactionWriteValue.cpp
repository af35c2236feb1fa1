#include "widgets/actions/qactionWriteValue.h"

#include "widgets/windows/Access.h"

#include "nodes/actions/actionWriteValue.h"

#include <QString>

namespace Widgets {

namespace {

constexpr int codeNoRights = 1320;
constexpr int codeSilent = 403;

} // namespace

void qactionWriteValue::Execute()
{
    const auto *node = nodeAs<Nodes::actionWriteValue>();
    if (!node)
        return;
    const Nodes::Result written = node->Write();
    if (written.IsSuccess() || written.GetCode() == codeSilent)
        return;
    if (written.GetCode() == codeNoRights)
        ShowAccessDenied();
    else
        ShowActionError(
            QString::fromStdString(node->GetName() + ": " + written.GetResultTranslated()));
}

} // namespace Widgets
