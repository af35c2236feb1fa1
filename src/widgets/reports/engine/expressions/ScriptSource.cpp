#include "widgets/reports/engine/expressions/ScriptSource.h"

#include "widgets/reports/engine/expressions/ContentParser.h"

#include <optional>

namespace LimeReport {

namespace {

struct FunctionName
{
    const char *name;
    Aggregate function;
};

constexpr FunctionName functionNames[] = {{"SUM", Aggregate::Sum},
                                          {"COUNT", Aggregate::Count},
                                          {"AVG", Aggregate::Average},
                                          {"MIN", Aggregate::Minimum},
                                          {"MAX", Aggregate::Maximum}};

bool isNameCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == '_' || c == '$';
}

// The function whose call begins at `at`, and where its opening bracket is.
std::optional<Aggregate> calledAt(const QString &script, int at, int *bracket)
{
    if (at > 0 && (isNameCharacter(script.at(at - 1)) || script.at(at - 1) == '.'))
        return std::nullopt;
    for (const FunctionName &known : functionNames) {
        const QLatin1String name(known.name);
        if (QStringView(script).mid(at, name.size()) != name)
            continue;
        *bracket = at + name.size();
        while (*bracket < script.size() && script.at(*bracket).isSpace())
            ++*bracket;
        if (*bracket < script.size() && script.at(*bracket) == '(')
            return known.function;
    }
    return std::nullopt;
}

QStringList argumentsOf(const QString &list)
{
    QStringList arguments{QString()};
    for (int i = 0; i < list.size();) {
        int end = ContentParser::lexemeEnd(list, i);
        if (list.at(i) == '(' || list.at(i) == '{')
            end = std::max(end, ContentParser::bracketEnd(list, i));
        if (list.at(i) == ',')
            arguments.append(QString());
        else
            arguments.last() += list.mid(i, end - i);
        i = end;
    }
    for (QString &argument : arguments)
        argument = argument.trimmed();
    return arguments;
}

bool isLiteral(const QString &argument)
{
    return argument.size() >= 2 && ContentParser::isQuote(argument.at(0)) &&
           ContentParser::lexemeEnd(argument, 0) == argument.size();
}

QString unquoted(const QString &literal)
{
    return isLiteral(literal) ? literal.mid(1, literal.size() - 2) : literal;
}

// What is evaluated for each row: a lone nested expression as it is, anything else as a script.
QString expressionOf(const QString &argument)
{
    const QString told = unquoted(argument).trimmed();
    const bool isWhole =
        told.startsWith(QStringLiteral("$S{")) || ContentParser::nestedEnd(told, 0) == told.size();
    return isWhole ? told : QStringLiteral("$S{%1}").arg(told);
}

class Reader
{
public:
    explicit Reader(const QString &script) : m_script(script) {}

    ScriptSource read()
    {
        for (int i = 0; i < m_script.size() && m_source.error.isEmpty();)
            i = readAt(i);
        return m_source;
    }

private:
    int readAt(int at)
    {
        const int end = ContentParser::lexemeEnd(m_script, at);
        int bracket = 0;
        if (ContentParser::isQuote(m_script.at(at)))
            m_source.code += literal(m_script.mid(at, end - at));
        else if (ContentParser::nestedEnd(m_script, at) > 0)
            m_source.code += parameter(nested(at, end, false));
        else if (const auto function = calledAt(m_script, at, &bracket))
            return readAggregate(*function, at, bracket);
        else
            m_source.code += m_script.mid(at, end - at);
        return end;
    }

    int readAggregate(Aggregate function, int at, int bracket)
    {
        const int end = ContentParser::bracketEnd(m_script, bracket);
        const QStringList arguments =
            end < 0 ? QStringList() : argumentsOf(m_script.mid(bracket + 1, end - bracket - 2));
        const bool isCountOfRows = function == Aggregate::Count && arguments.size() == 1;
        if ((arguments.size() != 2 && !isCountOfRows) || !isLiteral(arguments.last())) {
            m_source.error = QStringLiteral("«%1» требует выражения и названия полосы в "
                                            "кавычках; исправьте шаблон")
                                 .arg(m_script.mid(at, 40));
            return m_script.size();
        }
        ScriptInput input{ScriptInput::Kind::Aggregate, QString(), {}};
        input.aggregate.function = function;
        input.aggregate.expression = isCountOfRows ? QString() : expressionOf(arguments.first());
        input.aggregate.band = unquoted(arguments.last());
        m_source.code += parameter(input);
        return end;
    }

    // A literal with nested expressions becomes the sum of its parts.
    QString literal(const QString &text)
    {
        const QChar quote = text.at(0);
        const bool isTemplate = quote == '`';
        QString code;
        bool hasNested = false;
        for (int i = 0; i < text.size();) {
            const int end = ContentParser::nestedEnd(text, i);
            if (end < 0) {
                code += text.at(i++);
                continue;
            }
            hasNested = true;
            const QString name = parameter(nestedIn(text, i, end, true));
            code += isTemplate ? "${" + name + "}" : quote + QString("+" + name + "+") + quote;
            i = end;
        }
        return hasNested && !isTemplate ? "(" + code + ")" : code;
    }

    ScriptInput nested(int at, int end, bool isText) const
    {
        return nestedIn(m_script, at, end, isText);
    }

    static ScriptInput nestedIn(const QString &text, int at, int end, bool isText)
    {
        using Kind = ScriptInput::Kind;
        const bool isField = text.at(at + 1) == 'D';
        const Kind kind = isField ? (isText ? Kind::FieldText : Kind::Field)
                                  : (isText ? Kind::VariableText : Kind::Variable);
        return {kind, text.mid(at + 3, end - at - 4).trimmed(), {}};
    }

    QString parameter(const ScriptInput &input)
    {
        int index = m_source.inputs.indexOf(input);
        if (index < 0) {
            index = m_source.inputs.size();
            m_source.inputs.append(input);
        }
        return parameterName(index);
    }

    static QString parameterName(int index) { return QStringLiteral("v$%1").arg(index); }

    const QString &m_script;
    ScriptSource m_source;
};

} // namespace

ScriptSource ScriptSource::read(const QString &script)
{
    return Reader(script).read();
}

} // namespace LimeReport
