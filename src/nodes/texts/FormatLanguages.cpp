#include "nodes/texts/FieldTexts.h"
#include "nodes/values/NumberFormat.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr double sample = 1234.5678;

std::vector<TextWord> numberWords(const ConfigNode *)
{
    return {{TextWord::Field, "%.0f", "целое: 1235"},
            {TextWord::Field, "%.1f", "один знак после запятой: 1234.6"},
            {TextWord::Field, "%.2f", "два знака: 1234.57"},
            {TextWord::Field, "%3.2f", "два знака, не уже 3 мест"},
            {TextWord::Field, "%+.1f", "со знаком: +1234.6"},
            {TextWord::Field, "%g", "кратко: 1234.57"},
            {TextWord::Field, "%.2e", "степенью: 1.23e+03"},
            {TextWord::Field, "%%", "знак процента"}};
}

std::vector<TextProblem> checkNumber(const std::string &text, const ConfigNode *)
{
    std::string problem;
    if (text.empty() || NumberFormat::Parse(text, &problem))
        return {};
    return {{0, text.size(),
             "формат «" + text + "» не годится: " + problem + ". Подписи показаны как %3.2f"}};
}

TrialOutcome showNumber(const std::string &text, const ConfigNode *,
                        const std::vector<TrialInput> &)
{
    const auto format = NumberFormat::Parse(text.empty() ? "%3.2f" : text);
    return format ? TrialOutcome{true, format->Text(sample)} : TrialOutcome{false, "нет"};
}

std::vector<TextWord> timeWords(const ConfigNode *)
{
    return {{TextWord::Field, "hh", "часы, 00 - 23"},    {TextWord::Field, "mm", "минуты"},
            {TextWord::Field, "ss", "секунды"},          {TextWord::Field, "zzz", "миллисекунды"},
            {TextWord::Field, "dd", "число, 01 - 31"},   {TextWord::Field, "MM", "месяц, 01 - 12"},
            {TextWord::Field, "MMM", "месяц словом"},    {TextWord::Field, "yyyy", "год"},
            {TextWord::Field, "yy", "год, 2 цифры"},     {TextWord::Field, "ddd", "день недели"},
            {TextWord::Field, "hh:mm:ss", "время"},      {TextWord::Field, "dd.MM.yyyy", "дата"},
            {TextWord::Field, "hh:mm", "часы и минуты"}, {TextWord::Field, "\\n", "новая строка"}};
}

// A time that shows nothing of the moment is the same on all labels.
std::vector<TextProblem> checkTime(const std::string &text, const ConfigNode *)
{
    const bool isQuoteOpen = std::count(text.begin(), text.end(), '\'') % 2 != 0;
    if (isQuoteOpen)
        return {{text.rfind('\''), 1, "кавычка ' не закрыта", true}};
    if (text.empty() || text.find_first_of("hHmszdMy") != std::string::npos)
        return {};
    return {
        {0, text.size(), "в формате нет ни времени, ни даты: все подписи будут одинаковы", true}};
}

} // namespace

TextLanguage NumberLanguage()
{
    return {
        "numberFormat",
        "Как пишутся числа, например %.1f. Вокруг может стоять любой текст, %% - знак процента.",
        TextLanguage::NumberFormat,
        false,
        &numberWords,
        &checkNumber,
        nullptr,
        &showNumber};
}

TextLanguage TimeLanguage()
{
    return {"timeFormat",
            "Как пишется время, например hh:mm:ss; \\n начинает новую строку. Текст без замены - в "
            "кавычках '...'.",
            TextLanguage::TimeFormat,
            false,
            &timeWords,
            &checkTime,
            nullptr,
            nullptr};
}

} // namespace Nodes
