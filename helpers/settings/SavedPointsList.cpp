#include "helpers/settings/SavedPointsList.hpp"

#include <QFontMetrics>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "Vantrel/Interface/PreferencesWindowLayout.hpp"
#include "helpers/settings/QtObjects.hpp"

namespace vantrel::qt {

void SavedPointsModel::reload(std::uint32_t count) {
    const int newCount = static_cast<int>(std::min<std::uint32_t>(count, std::numeric_limits<int>::max()));
    if (newCount > count_) {
        beginInsertRows({}, count_, newCount - 1);
        count_ = newCount;
        endInsertRows();
    } else if (newCount < count_) {
        beginRemoveRows({}, newCount, count_ - 1);
        count_ = newCount;
        endRemoveRows();
    }
    if (count_ > 0) {
        Q_EMIT dataChanged(index(0), index(count_ - 1), {Qt::DisplayRole});
    }
}

void SavedPointsModel::redraw(std::uint32_t row) {
    if (row < static_cast<std::uint32_t>(count_)) {
        const QModelIndex changed = index(static_cast<int>(row));
        Q_EMIT dataChanged(changed, changed, {Qt::DisplayRole});
    }
}

int SavedPointsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

QVariant SavedPointsModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid()) {
        return {};
    }
    const auto text = textForRow_(static_cast<std::uint32_t>(index.row()));
    return text ? QVariant(QString::fromStdString(*text)) : QVariant();
}

QModelIndexList SavedPointsModel::match(const QModelIndex& /*start*/, int /*role*/, const QVariant& /*value*/,
                                        int /*hits*/, Qt::MatchFlags /*flags*/) const {
    return {};
}

QString SavedPointDelegate::displayText(const QVariant& value, const QLocale& /*locale*/) const {
    QString text = value.toString();
    // A name may hold line breaks; a row is one line.
    for (QChar& character : text) {
        if (character == '\n' || character == '\r' || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator) {
            character = ' ';
        }
    }
    return text;
}

QSize SavedPointDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
    // Without the row's text, which is made when the row is drawn and not before.
    return {0, std::max(PreferencesWindowLayout::savedPointRowHeight, option.fontMetrics.height())};
}

SavedPointsList::SavedPointsList(SavedPointsModel::TextForRow textForRow) : model_(std::move(textForRow)) {
    setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setFixedHeight(PreferencesWindowLayout::savedPointsHeight);

    table_.setObjectName("savedPoints");
    table_.setFrameShape(QFrame::NoFrame);
    // The background is this widget's: at fractional scales the table's own would cover the frame's thin line.
    table_.viewport()->setAutoFillBackground(false);
    table_.setModel(&model_);
    table_.setItemDelegate(&delegate_);
    table_.setUniformItemSizes(true);
    table_.setTextElideMode(Qt::ElideRight);
    table_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table_.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_.setTabKeyNavigation(false);
    table_.setAccessibleName(PreferencesWindowTexts::savedPointsSection);
    setFocusProxy(&table_);

    auto& layout = makeOwnedByParent<QVBoxLayout>(this);
    layout.setContentsMargins(0, 0, 0, 0);
    layout.addWidget(&table_);
}

void SavedPointsList::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    // Styles draw lines around whole places, which at other scales than 1 lie half outside and get lost there: half a
    // pixel of the screen keeps them in.
    if (const double scale = devicePixelRatioF(); scale > 1) {
        painter.translate(0.5 / scale, 0.5 / scale);
    }
    drawFrame(&painter);
}

}  // namespace vantrel::qt
