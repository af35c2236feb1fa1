#include "editor/panel/ElementGroups.h"

#include "nodes/model/KindTable.h"

namespace Editor {

namespace {

struct GroupRow
{
    const char *title;
    QVector<const char *> keys;
};

const QVector<GroupRow> &groupRows()
{
    static const QVector<GroupRow> rows = {
        {"Показания", {"label", "multiLabel", "bargraph", "recorderDisplay"}},
        {"Ввод и команды", {"button", "editBox", "comboBox", "checkBox"}},
        {"Картинки", {"image", "multiImage", "movingImage", "symbol", "instance"}},
        {"Графики", {"chartHistory", "chartXY", "chartCorridor"}},
        {"Тревоги и события", {"alarmList", "alarmBanner", "alarmHealth", "eventList"}},
        {"Отчёты", {"reportDisplay"}},
    };
    return rows;
}

} // namespace

QVector<ElementGroup> ElementGroups()
{
    QVector<ElementGroup> groups;
    QVector<const Nodes::KindInfo *> rest;
    for (const Nodes::KindInfo &kind : Nodes::KindTable::Instance().GetKinds()) {
        if (kind.type.GetFamily() == Nodes::NodeType::TypeWidget)
            rest.append(&kind);
    }
    for (const GroupRow &row : groupRows()) {
        ElementGroup group{QString::fromUtf8(row.title), {}};
        for (const char *key : row.keys) {
            const Nodes::KindInfo *kind = Nodes::KindTable::Instance().FindByKey(key);
            if (kind && rest.removeOne(kind))
                group.types.append(kind->type);
        }
        if (!group.types.isEmpty())
            groups.append(group);
    }
    ElementGroup others{QStringLiteral("Прочие"), {}};
    for (const Nodes::KindInfo *kind : qAsConst(rest))
        others.types.append(kind->type);
    if (!others.types.isEmpty())
        groups.append(others);
    return groups;
}

} // namespace Editor
