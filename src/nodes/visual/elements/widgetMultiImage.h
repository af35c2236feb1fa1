#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/elements/widgetImage.h"

namespace Nodes {

class widgetState;

/// A picture that follows the first of its states that the value matches.
class NODES_EXPORT widgetMultiImage : public widgetImage
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15009);
    struct Prop : LookProp
    {
        static constexpr PropertyId<ResourceLink> BadImage{12252, "badImage"};
        static constexpr PropertyId<int> NoPicture{12253, "noPicture"};
    };

    /// What is shown for a state without a picture and for a value without a state.
    enum enNoPicture { NoPictureHide = 1, NoPictureKeep = 2, NoPictureCross = 3 };
    /// In place of a state's index.
    enum enStateIndex { StateNone = -1, StateBad = -2 };

    static KindInfo Kind();

    /// Position among the states, from 0; StateNone when the value matches none, StateBad when its
    /// quality is bad: what the device said last is no state to operate by.
    virtual int GetStateIndex(const SignalValue &value) const;
    int GetCurrentStateIndex() const { return GetStateIndex(GetValue()); }
    /// Picture of the state with that index, for StateBad the one configured for bad values; its
    /// path is empty when there is none.
    ResourceLink GetStateImage(int index) const;
    /// Name of that state's node; "" when there is none.
    std::string GetStateName(int index) const;
    ResourceLink GetCurrentImage() const override { return GetStateImage(GetCurrentStateIndex()); }
    enNoPicture GetNoPicture() const { return enNoPicture(m_noPicture); }

private:
    std::vector<widgetState *> states() const;

    ResourceLink m_badImage;
    int m_noPicture = NoPictureCross;
};

} // namespace Nodes
