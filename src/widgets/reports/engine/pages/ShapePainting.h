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
/// Marks a box whose values are not good: hatched, with a sign in its corner, so that it is told
/// from the others on black and white paper too.
void paintQuality(QPainter &painter, const QRectF &rect, Nodes::Quality quality);

} // namespace LimeReport
