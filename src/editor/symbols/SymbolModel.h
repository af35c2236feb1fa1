#pragma once

#include "editor/symbols/SymbolCatalogue.h"

#include <QAbstractListModel>
#include <QHash>
#include <QPixmap>

namespace Editor {

/// Symbols of the palette, each with its picture; what is dragged becomes an element. GUI thread.
class SymbolModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role { Group = Qt::UserRole, Source };
    static constexpr int PictureSize = 56; ///< pixels, as those below
    static constexpr int ItemWidth = 112;
    static constexpr int ItemHeight = 100; ///< room for two lines of text

    explicit SymbolModel(QObject *parent = nullptr);

    /// Offers the project's own pictures behind the built-in ones, in place of those before.
    void setDirectory(const QString &directory);
    const SymbolRow &row(int index) const { return m_rows[index]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;

private:
    QPixmap picture(const SymbolRow &row) const;

    QVector<SymbolRow> m_rows;
    mutable QHash<QString, QPixmap> m_pictures;
};

} // namespace Editor
