#pragma once

#include "nodes/values/Quality.h"

class QImage;
class QPainter;
class QRectF;

namespace LimeReport {

struct TemplateItem;

/// Units of all: 0.1 mm.
void paintShape(QPainter &painter, const QRectF &rect, const TemplateItem &source);
void paintBorders(QPainter &painter, const QRectF &rect, const TemplateItem &source);
void paintPicture(QPainter &painter, const QRectF &rect, const QImage &image,
                  const TemplateItem &source);
/// Hatches a box whose values are not good; `isMarked` also puts a sign into its corner. Both are
/// told from the rest on black and white paper too.
void paintQuality(QPainter &painter, const QRectF &rect, Nodes::Quality quality, bool isMarked);

} // namespace LimeReport
