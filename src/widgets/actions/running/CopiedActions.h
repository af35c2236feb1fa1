#pragma once

#include "widgets/context/OwedActions.h"

#include <QVector>

namespace Widgets {

class qBasicAction;

/// Owed actions as objects of the window manager. Where that is gone when their time comes, they
/// go with it. GUI thread.
class CopiedActions : public OwedActions
{
public:
    /// Takes the objects over.
    explicit CopiedActions(QVector<qBasicAction *> actions);
    ~CopiedActions() override;
    CopiedActions(const CopiedActions &) = delete;
    CopiedActions &operator=(const CopiedActions &) = delete;

private:
    QVector<qBasicAction *> m_actions;
};

} // namespace Widgets
