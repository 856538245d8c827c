#pragma once

#include "ThemePreview.h"

#include <QAbstractListModel>
#include <QHash>
#include <QListView>
#include <QPixmap>

#include <functional>

QT_BEGIN_NAMESPACE
class QTimer;
QT_END_NAMESPACE

namespace quib {

/// The themes of the program with their pictures, which are drawn one after the other once they are asked for. Owned by
/// its gallery; main queue.
class ThemeGalleryModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role
    {
        PictureRole = Qt::UserRole,
        IsForLightRole,
        IsForDarkRole,
    };

    explicit ThemeGalleryModel(QObject *parent);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] int rowOfName(const QString &name) const { return int(m_names.indexOf(name)); }
    [[nodiscard]] QString nameOfRow(int row) const { return m_names.value(row); }
    /// Which themes are in use.
    void setChosen(const QString &forLight, const QString &forDark);
    /// Draws the pictures anew, as the fonts or the screen have changed.
    void forgetPictures();
    void setScale(double scale);

    /// Units: points.
    static constexpr QSize kPictureSize{186, 116};

private:
    void drawNext();

    QStringList m_names;
    QString m_forLight;
    QString m_forDark;
    double m_scale = 1;
    mutable QHash<int, QPixmap> m_pictures;
    mutable QList<int> m_wanted;
    QTimer *m_timer;
};

/// A gallery of the themes, to choose one: by a click, or by the arrow keys. Owned by its page; main queue.
class ThemeGallery final : public QListView
{
    Q_OBJECT

public:
    explicit ThemeGallery(QWidget *parent = nullptr);

    [[nodiscard]] ThemeGalleryModel &themes() { return *m_model; }
    /// Shows which theme is chosen, without telling.
    void showChosen(const QString &name);

Q_SIGNALS:
    void themeWasChosen(const QString &name);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    ThemeGalleryModel *m_model;
    bool m_isTelling = true;
};

} // namespace quib
