#pragma once

#include <QAbstractListModel>
#include <QFrame>
#include <QListView>
#include <QStyledItemDelegate>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace vantrel::qt {

/// The rows of the saved points: how many there are is known, their texts are asked for one by one when they are drawn.
class SavedPointsModel final : public QAbstractListModel {
  public:
    /// The text of a row; none for one that does not exist, or whose text is on its way.
    using TextForRow = std::function<std::optional<std::string>(std::uint32_t row)>;

    explicit SavedPointsModel(TextForRow textForRow) : textForRow_(std::move(textForRow)) {}

    /// Asks for all rows again, of which there are so many now. Rows that stay keep their place.
    void reload(std::uint32_t count);

    /// Says that the row has another text now.
    void redraw(std::uint32_t row);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// Finds nothing: letters typed into the table would make the texts of rows that nobody has scrolled to.
    [[nodiscard]] QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits,
                                        Qt::MatchFlags flags) const override;

  private:
    TextForRow textForRow_;
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
    explicit SavedPointsList(SavedPointsModel::TextForRow textForRow);

    void reload(std::uint32_t count) { model_.reload(count); }
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
