#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Quality.h"

#include <QString>
#include <QVariant>

namespace LimeReport {

struct ContentFormat;

/// How values are written in reports. No state, any thread.
namespace ValueText {

/// Written in place of a value that is missing.
WIDGETS_EXPORT extern const QString nothing;

/// Numbers with a decimal point and up to 15 digits, local date-times, "да" and "нет"; a dash for
/// no value.
WIDGETS_EXPORT QString usual(const QVariant &value);
/// As `format` wants it. What is no number or no date-time stays as it is, with `error` told.
WIDGETS_EXPORT QString formatted(const QVariant &value, const ContentFormat &format,
                                 QString *error);
/// A value that is not good is marked: " ?" behind it.
WIDGETS_EXPORT QString marked(const QString &text, Nodes::Quality quality);

/// A printf format of one number: "%.2f", "%05d", "%+.1e кПа". False, and an error, for any other.
WIDGETS_EXPORT bool printNumber(const QString &format, double number, QString *text,
                                QString *error);
/// Date-times as they are, dates at midnight, ISO texts, milliseconds since the epoch; else
/// invalid.
WIDGETS_EXPORT QDateTime toDateTime(const QVariant &value);
/// NaN for what is no number; texts are read.
WIDGETS_EXPORT double toNumber(const QVariant &value);

} // namespace ValueText

} // namespace LimeReport
