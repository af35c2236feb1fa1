#pragma once

#include "editor/properties/PropertyGroups.h"

#include <QDialog>

class QCheckBox;
class QFontComboBox;
class QLabel;
class QSpinBox;

namespace Editor {

class PropertyModel;
struct PropertyRow;

/// A font as a whole: family, size, styles, and a sample of it. What is applied is one step; parts
/// that nobody touched and that differ from node to node stay as they are.
class FontWindow : public QDialog
{
    Q_OBJECT

public:
    /// Of the row with that key in the model.
    FontWindow(PropertyModel &model, const QString &key, QWidget *parent);
    ~FontWindow() override;

private:
    struct Style
    {
        unsigned valueId;
        QCheckBox *box;
    };

    void addStyle(const PropertyRow &row, unsigned valueId, const QString &title);
    void fill(const PropertyRow &row);
    void showSample();
    void apply();

    PropertyModel &m_model;
    QString m_key;
    FontProperties m_ids{};
    QFontComboBox *m_family;
    QSpinBox *m_size;
    std::vector<Style> m_styles;
    QLabel *m_sample;
    bool m_isFamilyTouched = false;
    bool m_isSizeTouched = false;
};

} // namespace Editor
