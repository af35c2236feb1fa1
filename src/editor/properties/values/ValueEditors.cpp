#include "editor/properties/values/ValueEditors.h"

#include "editor/properties/PropertyGroups.h"
#include "editor/properties/texts/ExpressionEditor.h"
#include "editor/properties/values/BoolEditor.h"
#include "editor/properties/values/ChoiceEditor.h"
#include "editor/properties/values/ColorEditor.h"
#include "editor/properties/values/FontFamilyEditor.h"
#include "editor/properties/values/LinkEditor.h"
#include "editor/properties/values/LinksEditor.h"
#include "editor/properties/values/NumberEditor.h"
#include "editor/properties/values/PrivilegesEditor.h"
#include "editor/properties/values/ResourceEditor.h"
#include "editor/properties/values/SecretEditor.h"
#include "editor/properties/values/StringEditor.h"

#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/texts/TextLanguage.h"

namespace Editor {

namespace {

using Descriptor = Nodes::PropertyDescriptor;
using Nodes::PropertyType;

struct Row
{
    bool (*fits)(const Descriptor &descriptor);
    ValueEditor *(*make)(const ValueContext &context, QWidget *parent);
};

template <class Made> ValueEditor *make(const ValueContext &context, QWidget *parent)
{
    return new Made(context, parent);
}

template <PropertyType Type> bool isOf(const Descriptor &d)
{
    return d.binding.type == Type;
}

bool isNumber(const Descriptor &d)
{
    return isOf<PropertyType::Int>(d) || isOf<PropertyType::UInt>(d) ||
           isOf<PropertyType::Double>(d);
}

bool isFontFamily(const Descriptor &d)
{
    const FontProperties *font = fontOf(d.valueId);
    return font && font->family == d.valueId;
}

// The first that fits is taken.
const Row rows[] = {
    {[](const Descriptor &d) { return !d.choices.empty(); }, &make<ChoiceEditor>},
    {&isOf<PropertyType::Bool>, &make<BoolEditor>},
    {&isNumber, &make<NumberEditor>},
    {&isOf<PropertyType::Color>, &make<ColorEditor>},
    {&isOf<PropertyType::Link>, &make<LinkEditor>},
    {&isOf<PropertyType::Links>, &make<LinksEditor>},
    {&isOf<PropertyType::Resource>, &make<ResourceEditor>},
    {&isOf<PropertyType::Secret>, &make<SecretEditor>},
    {[](const Descriptor &d) { return d.editorHint == "privileges"; }, &make<PrivilegesEditor>},
    {[](const Descriptor &d) { return Nodes::FindTextLanguage(d.editorHint) != nullptr; },
     &make<ExpressionEditor>},
    {&isFontFamily, &make<FontFamilyEditor>},
    {[](const Descriptor &) { return true; }, &make<StringEditor>}};

} // namespace

ValueEditor *makeValueEditor(const ValueContext &context, QWidget *parent)
{
    if (!context.descriptor)
        return new StringEditor(context, parent);
    for (const Row &row : rows) {
        if (row.fits(*context.descriptor))
            return row.make(context, parent);
    }
    return nullptr;
}

} // namespace Editor
