#include "editor/review/ReviewRules.h"

#include <algorithm>

namespace Editor {

const QVector<ReviewRule> &ReviewRules()
{
    static const QVector<ReviewRule> rules = {
        {"contrast", "Контраст текста",
         "На ярком свету, издали и к концу смены бледный текст не прочесть.", &checkContrast},
        {"textSize", "Размер текста", "Оператор сидит дальше от экрана, чем вы сейчас.",
         &checkTextSize},
        {"clippedText", "Обрезанный текст",
         "Обрезанное число выглядит как другое число, обрезанное слово не узнать.",
         &checkClippedText},
        {"states", "Состояние только цветом",
         "Каждый двенадцатый мужчина путает цвета, а на плохом экране их путают все.",
         &checkStatesByColor},
        {"alarmColors", "Цвета тревог",
         "Там, где красное есть всегда, настоящую тревогу замечают поздно.", &checkAlarmColors},
        {"places", "За краем экрана", "То, что за краем, оператор не увидит никогда.",
         &checkPlaces},
        {"overlaps", "Наложение текста", "Наложенные тексты не прочесть ни один.", &checkOverlaps},
        {"grid", "Сетка", "В ровном ряду глаз находит отличие сразу.", &checkGrid},
        {"symbols", "Мнемосимвол не показан",
         "Вместо оборудования оператор видит пустую рамку с вопросом.", &checkSymbols},
        {"pictures", "Тяжёлые рисунки", "Большой рисунок читается и уменьшается при каждом вызове.",
         &checkPictures},
    };
    return rules;
}

const ReviewRule *findReviewRule(const QByteArray &id)
{
    const QVector<ReviewRule> &rules = ReviewRules();
    const auto found = std::find_if(rules.begin(), rules.end(),
                                    [&id](const ReviewRule &rule) { return id == rule.id; });
    return found == rules.end() ? nullptr : &*found;
}

} // namespace Editor
