#include "nodes/visual/elements/widgetMultiImage.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/elements/widgetState.h"

namespace Nodes {

KindInfo widgetMultiImage::Kind()
{
    KindBuilder builder = KindBuilder::For<widgetMultiImage>("multiImage", "Multi-state picture",
                                                             "Рисунок состояний");
    DescribeLook(builder);
    return builder
        .Property<&widgetMultiImage::m_badImage>(Prop::BadImage, "Picture of a bad value",
                                                 "Рисунок при недостоверном значении")
        .Property<&widgetMultiImage::m_noPicture>(Prop::NoPicture, "Without a picture",
                                                  "Если рисунка нет")
        .Choice(NoPictureHide, "hide", "Скрыть")
        .Choice(NoPictureKeep, "keep", "Оставить последний")
        .Choice(NoPictureCross, "cross", "Красный крест")
        .Children({NodeType::TypeState});
}

std::vector<widgetState *> widgetMultiImage::states() const
{
    std::vector<widgetState *> found;
    for (const auto &child : Children()) {
        if (auto *state = dynamic_cast<widgetState *>(child.get()))
            found.push_back(state);
    }
    return found;
}

int widgetMultiImage::GetStateIndex(const SignalValue &value) const
{
    if (GetSignalLink().isEmpty())
        return StateNone;
    if (value.GetQuality() == Quality::Bad)
        return StateBad;
    const std::vector<widgetState *> all = states();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i]->Matches(value))
            return int(i);
    }
    return StateNone;
}

ResourceLink widgetMultiImage::GetStateImage(int index) const
{
    if (index == StateBad)
        return m_badImage;
    const std::vector<widgetState *> all = states();
    return index >= 0 && index < int(all.size()) ? all[std::size_t(index)]->GetImage()
                                                 : ResourceLink();
}

std::string widgetMultiImage::GetStateName(int index) const
{
    const std::vector<widgetState *> all = states();
    return index >= 0 && index < int(all.size()) ? all[std::size_t(index)]->GetName()
                                                 : std::string();
}

} // namespace Nodes
