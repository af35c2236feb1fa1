#include "editor/review/ReviewRules.h"

namespace Editor {

const QVector<ReviewRule> &ReviewRules()
{
    static const QVector<ReviewRule> rules = {
        {"contrast", "Контраст текста", &checkContrast},
        {"textSize", "Размер текста", &checkTextSize},
        {"clippedText", "Обрезанный текст", &checkClippedText},
        {"states", "Состояние только цветом", &checkStatesByColor},
        {"alarmColors", "Цвета тревог", &checkAlarmColors},
        {"places", "За краем экрана", &checkPlaces},
        {"overlaps", "Наложение текста", &checkOverlaps},
        {"grid", "Сетка", &checkGrid},
        {"pictures", "Тяжёлые рисунки", &checkPictures},
    };
    return rules;
}

} // namespace Editor
