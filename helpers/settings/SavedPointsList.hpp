#pragma once

#include <QAbstractListModel>
#include <QFrame>
#include <QListView>
#include <QStyledItemDelegate>
#include <cstdint>
#include <memory>

#include "Vantrel/Interface/PreferencesWindowView.hpp"

namespace vantrel::qt {

/// The rows of the saved points: how many there are is known, their texts are asked for one by one when they are drawn.
class SavedPointsModel final : public QAbstractListModel {
  public:
    void setSource(std::weak_ptr<PreferencesWindowViewDelegate> source) { source_ = std::move(source); }

    /// Asks for all rows again. Rows that stay keep their place.
    void reload();

    /// Says that the row has another text now.
    void redraw(std::uint32_t row);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// Finds nothing: letters typed into the table would make the texts of rows that nobody has scrolled to.
    [[nodiscard]] QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits,
                                        Qt::MatchFlags flags) const override;

  private:
    std::weak_ptr<PreferencesWindowViewDelegate> source_;
    int count_ = 0;
};

/// Draws each row in one line of the layout's height, or of the font's where that is larger.
class SavedPointDelegate final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

/// The table of saved points in its frame. Hiding the table leaves the frame.
class SavedPointsList final : public QFrame {
  public:
    SavedPointsList();

    void setSource(std::weak_ptr<PreferencesWindowViewDelegate> source) { model_.setSource(std::move(source)); }
    void reload() { model_.reload(); }
    void redraw(std::uint32_t row) { model_.redraw(row); }
    void setTableHidden(bool hidden) { table_.setHidden(hidden); }

    QListView& table() { return table_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    SavedPointsModel model_;
    SavedPointDelegate delegate_;
    QListView table_;
};

}  // namespace vantrel::qt
