#pragma once

#include "editor/review/ReviewFinding.h"

namespace Editor {

class ReviewScreen;

/// One rule of good screens.
struct ReviewRule
{
    const char *id;    ///< steady
    const char *title; ///< Russian, as the next
    const char *why;   ///< what happens to an operator otherwise
    void (*check)(const ReviewScreen &screen, ReviewFindings &findings);
};

/// Null for an id of none.
const ReviewRule *findReviewRule(const QByteArray &id);

/// All rules on what one screen holds, in the order of reports. GUI thread: texts are measured.
const QVector<ReviewRule> &ReviewRules();

void checkContrast(const ReviewScreen &screen, ReviewFindings &findings);
void checkTextSize(const ReviewScreen &screen, ReviewFindings &findings);
void checkClippedText(const ReviewScreen &screen, ReviewFindings &findings);
void checkStatesByColor(const ReviewScreen &screen, ReviewFindings &findings);
void checkAlarmColors(const ReviewScreen &screen, ReviewFindings &findings);
void checkPlaces(const ReviewScreen &screen, ReviewFindings &findings);
void checkOverlaps(const ReviewScreen &screen, ReviewFindings &findings);
void checkGrid(const ReviewScreen &screen, ReviewFindings &findings);
void checkSymbols(const ReviewScreen &screen, ReviewFindings &findings);
void checkPictures(const ReviewScreen &screen, ReviewFindings &findings);

} // namespace Editor
