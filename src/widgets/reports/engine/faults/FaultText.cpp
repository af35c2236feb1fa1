#include "widgets/reports/engine/faults/FaultText.h"

#include <QRegularExpression>

namespace LimeReport {

namespace {

/// What the pattern caught stands in place of %1.
struct Phrase
{
    const char *pattern;
    const char *text;
};

constexpr Phrase xmlPhrases[] = {
    {"^Opening and ending tag mismatch",
     "закрывающий тег не соответствует открывающему. Проверьте, каждый ли элемент закрыт и в том "
     "ли порядке"},
    {"^Premature end of document",
     "файл обрывается. Он записан не до конца: сохраните шаблон заново или верните прежний"},
    {"^Extra content at end",
     "после корневого элемента стоит ещё что-то. Корневой элемент один, уберите лишнее"},
    {"^Start tag expected",
     "до корневого элемента стоит текст. Это не шаблон, или начало испорчено"},
    {"^Attribute '(.*)' redefined", "атрибут «%1» указан дважды. Оставьте один"},
    {"^Entity '(.*)' not declared",
     "неизвестная подстановка «&%1;». Знак & пишется в тексте как &amp;"},
    {"^Encoding (.*) is unsupported", "кодировка «%1» не читается. Сохраните файл в UTF-8"},
    {"^Encountered incorrectly encoded",
     "знаки не в той кодировке, что объявлена. Сохраните файл в UTF-8"},
    {"^Namespace prefix '(.*)' not declared", "пространство имён «%1» не объявлено"},
    {"^Unsupported XML version", "версия XML не та. Поставьте version=\"1.0\""},
    {"^Expected '=',", "у атрибута нет значения. Напишите имя=\"значение\""},
    {"^Expected ''' or", "значение атрибута без кавычек. Заключите его в кавычки"},
    {"^Unexpected '(.*)'", "лишний знак «%1»"},
    {"but got '(.*)'", "не тот знак: «%1»"},
};

constexpr Phrase scriptPhrases[] = {
    {"^ReferenceError: (\\S+) is not defined",
     "имя «%1» неизвестно. Проверьте, как оно написано; данные — $D{...}, переменные — $V{...}"},
    {"^TypeError: Cannot read property '(.*)' of ",
     "свойство «%1» спрошено у пустого значения. Проверьте, есть ли данные"},
    {"^TypeError: Cannot call method '(.*)' of ",
     "функция «%1» вызвана у пустого значения. Проверьте, есть ли данные"},
    {"^TypeError: Property '(.*)' of object .* is not a function",
     "функции «%1» нет. Проверьте, как она написана"},
    {"^SyntaxError: Expected token `(.*)'",
     "ошибка в записи, ожидается «%1». Проверьте скобки и кавычки"},
    {"^SyntaxError: Unexpected token `(.*)'",
     "ошибка в записи, лишнее «%1». Проверьте скобки и кавычки"},
    {"^SyntaxError: Identifier (.*) has already been declared", "имя «%1» объявлено дважды"},
    {"^SyntaxError: JSON", "текст — не JSON"},
    {"^SyntaxError: Syntax error$", "ошибка в записи. Проверьте скобки и кавычки"},
    {"^RangeError: Maximum call stack",
     "функция вызывает сама себя без конца. Добавьте условие выхода"},
    {"^RangeError: a text of more than (\\d+)", "текст длиннее %1 знаков"},
    {"^RangeError: (-?[\\d.]+) out of range", "число %1 недопустимо велико или мало"},
    {"^TypeError(: Type error)?$", "действие с этим значением не делается"},
};

// By the kinds of errors that the language has.
constexpr Phrase scriptKinds[] = {
    {"^SyntaxError\\b(.*)", "ошибка в записи%1"},
    {"^ReferenceError\\b(.*)", "неизвестное имя%1"},
    {"^TypeError\\b(.*)", "действие не подходит к значению%1"},
    {"^(?:RangeError|URIError|EvalError)\\b(.*)", "недопустимое значение%1"},
    {"^Error: (.*)", "%1"},
};

template <int Count> QString found(const Phrase (&phrases)[Count], const QString &message)
{
    for (const Phrase &phrase : phrases) {
        const QRegularExpression pattern(QString::fromLatin1(phrase.pattern));
        const QRegularExpressionMatch match = pattern.match(message);
        const QString text = QString::fromUtf8(phrase.text);
        if (match.hasMatch())
            return text.contains(QLatin1String("%1")) ? text.arg(match.captured(1)) : text;
    }
    return QString();
}

bool isRussian(const QString &text)
{
    static const QRegularExpression letters(QStringLiteral("[а-яё]"));
    return text.contains(letters);
}

} // namespace

QString FaultText::xml(const QString &message)
{
    if (isRussian(message))
        return message;
    const QString text = found(xmlPhrases, message);
    return text.isEmpty() ? QStringLiteral("нарушена запись XML (%1)").arg(message) : text;
}

QString FaultText::script(const QString &message)
{
    const QString known = found(scriptPhrases, message);
    const QString text = known.isEmpty() ? found(scriptKinds, message) : known;
    return text.isEmpty() ? message : text;
}

} // namespace LimeReport
