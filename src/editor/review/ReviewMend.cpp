#include "editor/review/ReviewMend.h"

#include "editor/review/ReviewRules.h"
#include "editor/review/ReviewScreen.h"

#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CommandGroup.h"

#include <memory>

namespace Editor {

namespace {

ReviewFindings foundNow(const Nodes::ConfigNode &screen, const QByteArray &rule)
{
    ReviewFindings findings;
    if (const ReviewRule *row = findReviewRule(rule))
        row->check(ReviewScreen(screen), findings);
    return findings;
}

} // namespace

QUndoCommand *ReviewMend::make(const Nodes::NodeLinks &screens, const ReviewFindings &findings)
{
    auto group = std::make_unique<Utils::CommandGroup>(QStringLiteral("Исправление экрана"));
    for (int i = 0; i < findings.size(); ++i) {
        const Nodes::ConfigNode *screen = screens[std::size_t(i)].GetNode();
        if (!screen || findings[i].mend.isEmpty())
            continue;
        for (const ReviewFinding &now : foundNow(*screen, findings[i].rule)) {
            if (now.where != findings[i].where)
                continue;
            for (const ReviewChange &change : now.mend)
                new Utils::ChangePropertyCommand(change.node, change.property, change.value,
                                                 group.get());
        }
    }
    return group->childCount() > 0 ? group.release() : nullptr;
}

} // namespace Editor
