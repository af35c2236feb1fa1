#include "editor/properties/values/ValueEditors.h"

#include "editor/properties/PropertyGroups.h"
#include "editor/properties/texts/ExpressionEditor.h"
#include "editor/properties/values/BoolEditor.h"
#include "editor/properties/values/ChoiceEditor.h"
#include "editor/properties/values/ColorEditor.h"
#include "editor/properties/values/FontFamilyEditor.h"
#include "editor/properties/values/KeysEditor.h"
#include "editor/properties/values/LinkEditor.h"
#include "editor/properties/values/LinksEditor.h"
#include "editor/properties/values/LogicalValueEditor.h"
#include "editor/properties/values/NumberEditor.h"
#include "editor/properties/values/PrivilegesEditor.h"
#include "editor/properties/values/ResourceEditor.h"
#include "editor/properties/values/SecretEditor.h"
#include "editor/properties/values/SharedTextEditor.h"
#include "editor/properties/values/StringEditor.h"
#include "editor/properties/values/TimeEditor.h"
#include "editor/properties/values/WordsEditor.h"

#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/texts/TextLanguage.h"

#include <algorithm>

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

bool isWords(const Descriptor &d)
{
    return isOf<PropertyType::String>(d) && !d.choices.empty();
}

bool isOfLanguage(const Descriptor &d)
{
    return Nodes::FindTextLanguage(d.editorHint) != nullptr;
}

// A value is written as its signal's type has it.
ValueEditor *makeOfSignal(const ValueContext &context, QWidget *parent)
{
    return LogicalValueEditor::fits(context) ? make<LogicalValueEditor>(context, parent)
                                             : make<StringEditor>(context, parent);
}

// The first that fits is taken.
const Row rows[] = {{&isWords, &make<WordsEditor>},
                    {[](const Descriptor &d) { return !d.choices.empty(); }, &make<ChoiceEditor>},
                    {&isOf<PropertyType::Bool>, &make<BoolEditor>},
                    {&isNumber, &make<NumberEditor>},
                    {&isOf<PropertyType::Color>, &make<ColorEditor>},
                    {&isOf<PropertyType::Link>, &make<LinkEditor>},
                    {&isOf<PropertyType::Links>, &make<LinksEditor>},
                    {&isOf<PropertyType::Resource>, &make<ResourceEditor>},
                    {&isOf<PropertyType::Secret>, &make<SecretEditor>},
                    {&isOfLanguage, &make<ExpressionEditor>},
                    {&isFontFamily, &make<FontFamilyEditor>}};

struct HintRow
{
    const char *hint;
    ValueEditor *(*make)(const ValueContext &context, QWidget *parent);
};

// Texts that are more than a line of text.
const HintRow hintRows[] = {
    {"multiline", &make<StringEditor>},  {"privileges", &make<PrivilegesEditor>},
    {"shared", &make<SharedTextEditor>}, {"keys", &make<KeysEditor>},
    {"time", &make<TimeEditor>},         {"value", &makeOfSignal}};

const HintRow *hintRowOf(const Descriptor &d)
{
    const auto *found = std::find_if(std::begin(hintRows), std::end(hintRows),
                                     [&](const HintRow &row) { return d.editorHint == row.hint; });
    return found == std::end(hintRows) ? nullptr : found;
}

} // namespace

ValueEditor *makeValueEditor(const ValueContext &context, QWidget *parent)
{
    if (!context.descriptor)
        return new StringEditor(context, parent);
    for (const Row &row : rows) {
        if (row.fits(*context.descriptor))
            return row.make(context, parent);
    }
    const HintRow *hinted = hintRowOf(*context.descriptor);
    return hinted ? hinted->make(context, parent) : new StringEditor(context, parent);
}

bool hasOwnEditor(const Descriptor &descriptor)
{
    return hintRowOf(descriptor) ||
           std::any_of(std::begin(rows), std::end(rows),
                       [&](const Row &row) { return row.fits(descriptor); });
}

} // namespace Editor
