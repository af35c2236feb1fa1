#pragma once

#include <QString>

namespace LimeReport {

/// How an item wants values written; `valueType` and `format` of a template's text item.
struct ContentFormat
{
    enum ValueType { Default = 0, DateTime = 1, Double = 2 };

    int valueType = Default;
    QString format;      ///< of date-times as Qt has it, of numbers "%.2f", "" for the usual text
    bool isHtml = false; ///< values are escaped
    bool isTrimmed = false;
};

} // namespace LimeReport
