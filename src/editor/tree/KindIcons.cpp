#include "editor/tree/KindIcons.h"

#include "editor/tree/KindIconEngine.h"

#include <QFile>
#include <QHash>

namespace Editor {

namespace {

QIcon load(Nodes::NodeType type)
{
    const QString key = QString::fromStdString(type.ToString());
    const QString family = QString::number(type.GetFamily(), 16);
    for (const QString &name : {QStringLiteral(":/icons/elements/%1.svg").arg(key),
                                QStringLiteral(":/editor/kinds/%1.svg").arg(key),
                                QStringLiteral(":/editor/kinds/family-%1.svg").arg(family)}) {
        if (QFile::exists(name))
            return QIcon(new KindIconEngine(QIcon(name)));
    }
    return QIcon(new KindIconEngine(QIcon(QStringLiteral(":/editor/kinds/node.svg"))));
}

} // namespace

QIcon KindIcons::of(Nodes::NodeType type)
{
    static QHash<unsigned, QIcon> icons;
    const auto known = icons.constFind(type.GetCode());
    return known != icons.constEnd() ? *known : *icons.insert(type.GetCode(), load(type));
}

} // namespace Editor
