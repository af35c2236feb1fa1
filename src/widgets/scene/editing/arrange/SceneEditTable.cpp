#include "widgets/scene/editing/arrange/SceneEditTable.h"

#include "widgets/scene/editing/arrange/EditedElements.h"
#include "widgets/scene/editing/arrange/ElementEdits.h"
#include "widgets/scene/editing/arrange/HiddenElements.h"
#include "widgets/scene/editing/arrange/LayerEdits.h"
#include "widgets/scene/editing/groups/GroupEdits.h"
#include "widgets/scene/editing/paste/ElementCopies.h"
#include "widgets/scene/editing/paste/PropertyPaste.h"

#include <algorithm>

namespace Widgets {

namespace {

using Edited = EditedElements;
using Kind = Arrangement::enKind;

template <Kind kind> QUndoCommand *arrange(const Edited &edited)
{
    static constexpr const char *texts[] = {"Выравнивание по левому краю",
                                            "Выравнивание по центру",
                                            "Выравнивание по правому краю",
                                            "Выравнивание по верхнему краю",
                                            "Выравнивание по середине",
                                            "Выравнивание по нижнему краю",
                                            "Равные промежутки по ширине",
                                            "Равные промежутки по высоте",
                                            "Равные шаги центров по ширине",
                                            "Равные шаги центров по высоте",
                                            "Одинаковая ширина",
                                            "Одинаковая высота",
                                            "Одинаковый размер"};
    static_assert(std::size(texts) == std::size_t(Kind::SameSize) + 1);
    return ElementEdits::arrange(edited, kind, QString::fromUtf8(texts[std::size_t(kind)]));
}

template <int step> QUndoCommand *moveOrder(const Edited &edited)
{
    return ElementEdits::moveOrder(edited, step);
}

template <int step> QUndoCommand *moveLayer(const Edited &edited)
{
    return LayerEdits::moveToNext(edited, step);
}

template <bool isMovable> QUndoCommand *setMovable(const Edited &edited)
{
    return ElementEdits::setMovable(edited, isMovable);
}

QUndoCommand *showHidden(const Edited &edited)
{
    return edited.document ? HiddenElements::show(HiddenElements::in(*edited.document)) : nullptr;
}

QUndoCommand *duplicate(const Edited &edited)
{
    return ElementCopies::duplicate(edited);
}

template <PropertyPaste::enWhat what> QUndoCommand *pasteProperties(const Edited &edited)
{
    return PropertyPaste::fromClipboard(edited, what);
}

const char *const aligning = "Выровнять";
const char *const spreading = "Распределить";
const char *const sizing = "Сделать одинаковыми";
const char *const ordering = "Порядок";

} // namespace

const std::vector<SceneEditRow> &SceneEditTable::rows()
{
    static const std::vector<SceneEditRow> rows{
        {"duplicate", "", "Дублировать", "Ctrl+D", 1, duplicate, true},
        {"pasteProperties", "", "Вставить свойства", "Ctrl+Shift+V", 1,
         pasteProperties<PropertyPaste::Looks>},
        {"pastePropertiesAndLinks", "", "Вставить свойства и привязки", "", 1,
         pasteProperties<PropertyPaste::LooksAndLinks>},
        {"group", "", "Сгруппировать", "Ctrl+G", 2, GroupEdits::group, false, GroupEdits::canGroup},
        {"ungroup", "", "Разгруппировать", "Ctrl+Shift+G", 1, GroupEdits::ungroup, false,
         GroupEdits::canUngroup},
        {"alignLeft", aligning, "По левому краю", "Ctrl+Shift+Left", 2, arrange<Kind::AlignLeft>},
        {"alignCentre", aligning, "По центру", "Ctrl+Shift+C", 2, arrange<Kind::AlignCentre>},
        {"alignRight", aligning, "По правому краю", "Ctrl+Shift+Right", 2,
         arrange<Kind::AlignRight>},
        {"alignTop", aligning, "По верхнему краю", "Ctrl+Shift+Up", 2, arrange<Kind::AlignTop>},
        {"alignMiddle", aligning, "По середине", "Ctrl+Shift+M", 2, arrange<Kind::AlignMiddle>},
        {"alignBottom", aligning, "По нижнему краю", "Ctrl+Shift+Down", 2,
         arrange<Kind::AlignBottom>},
        {"gapsAcross", spreading, "Равные промежутки по ширине", "", 3, arrange<Kind::GapsAcross>},
        {"gapsDown", spreading, "Равные промежутки по высоте", "", 3, arrange<Kind::GapsDown>},
        {"centresAcross", spreading, "Центры по ширине", "", 3, arrange<Kind::CentresAcross>},
        {"centresDown", spreading, "Центры по высоте", "", 3, arrange<Kind::CentresDown>},
        {"sameWidth", sizing, "Ширину", "", 2, arrange<Kind::SameWidth>},
        {"sameHeight", sizing, "Высоту", "", 2, arrange<Kind::SameHeight>},
        {"sameSize", sizing, "Ширину и высоту", "", 2, arrange<Kind::SameSize>},
        {"toFront", ordering, "На передний план", "Ctrl+Shift+PgUp", 1, ElementEdits::toFront},
        {"orderUp", ordering, "Переместить выше", "Shift+PgUp", 1, moveOrder<1>},
        {"orderDown", ordering, "Переместить ниже", "Shift+PgDown", 1, moveOrder<-1>},
        {"toBack", ordering, "На задний план", "Ctrl+Shift+PgDown", 1, ElementEdits::toBack},
        {"layerUp", ordering, "На слой выше", "Ctrl+Alt+PgUp", 1, moveLayer<1>},
        {"layerDown", ordering, "На слой ниже", "Ctrl+Alt+PgDown", 1, moveLayer<-1>},
        {"lock", "", "Заблокировать", "Ctrl+L", 1, setMovable<false>},
        {"unlock", "", "Разблокировать", "Ctrl+Shift+L", 1, setMovable<true>},
        {"hide", "", "Скрыть", "Ctrl+Shift+H", 1, ElementEdits::hide},
        {"showHidden", "", "Показать скрытые", "", 0, showHidden},
    };
    return rows;
}

const SceneEditRow *SceneEditTable::find(const QString &id)
{
    const auto found = std::find_if(rows().begin(), rows().end(), [&id](const SceneEditRow &row) {
        return id == QLatin1String(row.id);
    });
    return found == rows().end() ? nullptr : &*found;
}

bool SceneEditTable::isPossible(const SceneEditRow &row, const EditedElements &edited)
{
    return static_cast<int>(edited.elements.size()) >= row.minimum &&
           (!row.isPossible || row.isPossible(edited));
}

} // namespace Widgets
