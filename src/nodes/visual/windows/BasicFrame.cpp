#include "nodes/visual/windows/BasicFrame.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo BasicFrame::Kind()
{
    return KindBuilder::For<BasicFrame>(NodeType::enNodeSubtype(0x11001), "frame", "Frame", "Фрейм")
        .Property<&BasicFrame::m_displayNo>(17001, "display", "Display", "Дисплей")
        .Range(1, 64)
        .Property<&BasicFrame::m_borderType>(17002, "border", "Border", "Рамка")
        .Choice(BorderNone, "none", "Нет")
        .Choice(BorderDecorated, "decorated", "Окно с рамкой")
        .Property<&BasicFrame::m_windows>(17003, "windows", "Windows", "Окна")
        .Refers({NodeType::TypeWindow})
        .Property<&BasicFrame::m_fit>(17004, "fit", "Fit to display", "Масштаб на дисплее")
        .Choice(FitAsDrawn, "asDrawn", "Как нарисовано")
        .Choice(FitInside, "fit", "Вписать")
        .Choice(FitFill, "fill", "Растянуть");
}

} // namespace Nodes
