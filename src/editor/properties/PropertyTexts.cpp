#include "editor/properties/PropertyTexts.h"

#include "nodes/auth/PrivilegeSet.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/values/NumberText.h"

#include <QStringList>

#include <cmath>

namespace Editor {

namespace {

using Descriptor = Nodes::PropertyDescriptor;
using Nodes::PropertyType;

constexpr int maximumListed = 12;

QString choiceName(const Descriptor &d, const QString &token)
{
    for (const Nodes::PropertyChoice &choice : d.choices) {
        if (choice.token == token.toStdString())
            return QString::fromStdString(choice.nameRu);
    }
    return token;
}

QString wordNames(const Descriptor &d, const QString &text)
{
    QStringList names;
    for (const QString &token : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        names << choiceName(d, token);
    return names.isEmpty() ? QStringLiteral("нет") : names.join(QStringLiteral(", "));
}

QString linkName(const QString &id, const Nodes::NodesCollection *project)
{
    const Nodes::ConfigNode *node = project ? project->FindNode(id.toULong()) : nullptr;
    return node ? QString::fromStdString(node->GetName()) : QStringLiteral("узла %1 нет").arg(id);
}

QString linkNames(const QString &text, const Nodes::NodesCollection *project)
{
    QStringList ids = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (ids.isEmpty())
        return QStringLiteral("нет");
    const int count = ids.size();
    QStringList names;
    for (const QString &id : ids.mid(0, maximumListed))
        names << linkName(id, project);
    const QString list = names.join(QStringLiteral(", "));
    return count == 1 ? list : QStringLiteral("%1: %2").arg(count).arg(list);
}

QString privilegeNames(const QString &text)
{
    if (text == QLatin1String("all"))
        return QStringLiteral("все");
    const auto set = Nodes::PrivilegeSet::FromText(text.toStdString());
    QStringList names;
    for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type) {
        if (set.Contains(Nodes::enPrivilegeType(type)))
            names << QString::fromStdString(Nodes::PrivilegeName(Nodes::enPrivilegeType(type)));
    }
    return names.isEmpty() ? QStringLiteral("нет") : names.join(QStringLiteral(", "));
}

QString stringLine(const Descriptor &d, const QString &text)
{
    if (d.editorHint == "privileges")
        return privilegeNames(text);
    const int end = text.indexOf(QLatin1Char('\n'));
    return end < 0 ? text : text.left(end) + QStringLiteral(" …");
}

QString typeName(PropertyType type)
{
    switch (type) {
    case PropertyType::Bool:
        return QStringLiteral("да или нет");
    case PropertyType::Int:
        return QStringLiteral("целое число");
    case PropertyType::UInt:
        return QStringLiteral("целое число не меньше 0");
    case PropertyType::Double:
        return QStringLiteral("число");
    case PropertyType::Color:
        return QStringLiteral("цвет #rrggbb или #rrggbbaa");
    case PropertyType::Link:
        return QStringLiteral("узел проекта");
    case PropertyType::Links:
        return QStringLiteral("узлы проекта по порядку");
    case PropertyType::Resource:
        return QStringLiteral("файл из папки проекта");
    case PropertyType::Secret:
        return QStringLiteral("пароль; не показывается");
    case PropertyType::String:
        break;
    }
    return QStringLiteral("текст");
}

} // namespace

QString PropertyTexts::mixed()
{
    return QStringLiteral("<разные>");
}

QString PropertyTexts::shown(const Descriptor &d, const QString &text,
                             const Nodes::NodesCollection *project)
{
    if (!d.choices.empty())
        return d.binding.type == PropertyType::String ? wordNames(d, text) : choiceName(d, text);
    switch (d.binding.type) {
    case PropertyType::Bool:
        return text == QLatin1String("true") ? QStringLiteral("да") : QStringLiteral("нет");
    case PropertyType::Double: {
        const auto number = Nodes::ParseDouble(text.toStdString());
        return number && !std::isfinite(*number) ? QStringLiteral("не задано") : text;
    }
    case PropertyType::Color:
        return text.size() == 9 && text.endsWith(QLatin1String("00")) ? QStringLiteral("прозрачный")
                                                                      : text;
    case PropertyType::Link:
        return text.isEmpty() ? QStringLiteral("нет") : linkName(text, project);
    case PropertyType::Links:
        return linkNames(text, project);
    case PropertyType::Resource:
        return text.isEmpty() ? QStringLiteral("нет") : text;
    case PropertyType::Secret:
        return text.isEmpty() ? QStringLiteral("не задан") : QStringLiteral("задан");
    case PropertyType::String:
        return stringLine(d, text);
    default:
        return text;
    }
}

QString PropertyTexts::admissible(const Descriptor &d)
{
    if (!d.choices.empty()) {
        QStringList names;
        for (const Nodes::PropertyChoice &choice : d.choices)
            names << QString::fromStdString(choice.nameRu);
        return (d.binding.type == PropertyType::String ? QStringLiteral("несколько из: ")
                                                       : QStringLiteral("одно из: ")) +
               names.join(QStringLiteral(", "));
    }
    const QString type = typeName(d.binding.type);
    if (!d.hasRange)
        return type;
    return QStringLiteral("%1 от %2 до %3")
        .arg(type, QString::fromStdString(Nodes::FormatDouble(d.minimum)),
             QString::fromStdString(Nodes::FormatDouble(d.maximum)));
}

QString PropertyTexts::refusal(const Descriptor &d, const QString &text)
{
    return QStringLiteral("«%1» не подходит. Допустимо: %2.").arg(text.left(40), admissible(d));
}

QString PropertyTexts::help(const Descriptor &d, const Nodes::NodesCollection *project)
{
    QStringList lines{QStringLiteral("%1 (%2)").arg(QString::fromStdString(d.nameRu),
                                                    QString::fromStdString(d.key)),
                      QStringLiteral("Допустимо: %1").arg(admissible(d))};
    if (d.binding.type != PropertyType::Secret) {
        const QString initial = shown(d, QString::fromStdString(d.defaultText), project);
        lines << QStringLiteral("По умолчанию: %1")
                     .arg(initial.isEmpty() ? QStringLiteral("пусто") : initial);
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace Editor
