#include "nodes/visual/windows/BasicFrame.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo BasicFrame::Kind()
{
    return KindBuilder::For<BasicFrame>("frame", "Frame", "Фрейм")
        .Property<&BasicFrame::m_displayNo>(Prop::Display, "Display", "Дисплей")
        .Range(1, 64)
        .Property<&BasicFrame::m_borderType>(Prop::Border, "Border", "Рамка")
        .Choice(BorderNone, "none", "Нет")
        .Choice(BorderDecorated, "decorated", "Окно с рамкой")
        .Property<&BasicFrame::m_windows>(Prop::Windows, "Windows", "Окна")
        .Refers({NodeType::TypeWindow})
        .Property<&BasicFrame::m_fit>(Prop::Fit, "Fit to display", "Масштаб на дисплее")
        .Choice(FitAsDrawn, "asDrawn", "Как нарисовано")
        .Choice(FitInside, "fit", "Вписать")
        .Choice(FitFill, "fill", "Растянуть");
}

} // namespace Nodes
