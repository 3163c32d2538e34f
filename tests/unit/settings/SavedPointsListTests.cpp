#include "helpers/settings/SavedPointsList.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QScrollBar>
#include <QTest>
#include <set>
#include <string>

#include "helpers/settings/QtApplication.hpp"

namespace vantrel::qt {
namespace {

/// Rows that note which of them were asked for.
struct Rows {
    std::optional<std::string> textForRow(std::uint32_t row) {
        asked.insert(row);
        return row < count ? std::optional(prefix + std::to_string(row)) : std::nullopt;
    }

    std::uint32_t count = 0;
    std::string prefix = "Point ";
    std::set<std::uint32_t> asked;
};

class SavedPointsListTest : public testing::Test {
  protected:
    SavedPointsListTest() { list.resize(480, list.height()); }

    void load(std::uint32_t count) {
        rows.count = count;
        list.reload(count);
    }

    void draw() {
        list.show();
        QApplication::processEvents();
        list.grab();
    }

    QScrollBar& scrollBar() { return *list.table().verticalScrollBar(); }
    QString text(int row) { return list.table().model()->index(row, 0).data().toString(); }

    std::string problem;
    std::unique_ptr<QtApplication> application = QtApplication::start("offscreen", problem);
    Rows rows;
    SavedPointsList list{[this](std::uint32_t row) { return rows.textForRow(row); }};
};

TEST_F(SavedPointsListTest, size_any_isOfTheLayout) {
    load(3);
    draw();
    EXPECT_EQ(list.height(), 112);
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(list.table().visualRect(list.table().model()->index(row, 0)).height(), 24);
    }
}

TEST_F(SavedPointsListTest, reload_thousandRows_areAskedForOnlyWhenDrawn) {
    load(1000);
    EXPECT_TRUE(rows.asked.empty());
    draw();
    EXPECT_TRUE(rows.asked.contains(0));
    EXPECT_LE(rows.asked.size(), 6U);
    EXPECT_FALSE(rows.asked.contains(999));
    scrollBar().setValue(scrollBar().maximum());
    list.grab();
    EXPECT_TRUE(rows.asked.contains(999));
    EXPECT_LE(rows.asked.size(), 12U);
}

TEST_F(SavedPointsListTest, letters_typed_askForNoFurtherRows) {
    load(1000);
    draw();
    const auto drawn = rows.asked;
    QTest::keyClicks(&list.table(), "Point 9");
    EXPECT_EQ(rows.asked, drawn);
}

TEST_F(SavedPointsListTest, reload_scrolled_keepsThePlaceAndTheSelection) {
    load(1000);
    draw();
    scrollBar().setValue(5000);
    list.table().setCurrentIndex(list.table().model()->index(210, 0));
    const int place = scrollBar().value();
    for (const std::uint32_t count : {1000U, 1001U, 900U}) {
        load(count);
        QApplication::processEvents();
        EXPECT_EQ(scrollBar().value(), place);
        EXPECT_EQ(list.table().currentIndex().row(), 210);
    }
}

TEST_F(SavedPointsListTest, reload_otherTexts_areShown) {
    load(2);
    EXPECT_EQ(text(1), "Point 1");
    rows.prefix = "Desk ";
    load(2);
    EXPECT_EQ(text(1), "Desk 1");
    load(0);
    EXPECT_EQ(list.table().model()->rowCount(), 0);
}

/// Whether a picture's pixels from `begin` on differ from its middle somewhere on every step along the line.
bool hasLine(const QImage& picture, QPoint begin, QPoint step, QPoint inwards) {
    const QRgb middle = picture.pixel(picture.rect().center());
    for (QPoint place = begin; picture.rect().contains(place); place += step) {
        if (picture.pixel(place) == middle && picture.pixel(place + inwards) == middle) {
            return false;
        }
    }
    return true;
}

TEST(SavedPointsListScales, frame_everyScale_hasFourSides) {
    for (const char* const scale : {"1", "1.25", "1.5", "1.75", "2"}) {
        SCOPED_TRACE(scale);
        setenv("QT_SCALE_FACTOR", scale, 1);
        std::string problem;
        const auto application = QtApplication::start("offscreen", problem);
        ASSERT_TRUE(application) << problem;
        unsetenv("QT_SCALE_FACTOR");
        SavedPointsList list([](std::uint32_t) { return std::nullopt; });
        list.resize(480, list.height());
        list.show();
        const QImage picture = list.grab().toImage();
        ASSERT_EQ(picture.width(), static_cast<int>(480 * std::stod(scale)));
        const QPoint last(picture.width() - 1, picture.height() - 1);
        EXPECT_TRUE(hasLine(picture, {0, 0}, {1, 0}, {0, 1})) << "top";
        EXPECT_TRUE(hasLine(picture, {0, 0}, {0, 1}, {1, 0})) << "left";
        EXPECT_TRUE(hasLine(picture, last, {-1, 0}, {0, -1})) << "bottom";
        EXPECT_TRUE(hasLine(picture, last, {0, -1}, {-1, 0})) << "right";
    }
}

TEST_F(SavedPointsListTest, setTableHidden_yes_leavesTheFrame) {
    load(0);
    list.setTableHidden(true);
    draw();
    EXPECT_FALSE(list.table().isVisible());
    EXPECT_TRUE(list.isVisible());
    EXPECT_EQ(list.height(), 112);
    list.setTableHidden(false);
    EXPECT_TRUE(list.table().isVisible());
}

TEST_F(SavedPointsListTest, displayText_lineBreaks_areBlanks) {
    const SavedPointDelegate delegate;
    EXPECT_EQ(delegate.displayText(QString("Desk\nleft - x 1, y 2"), QLocale::c()), "Desk left - x 1, y 2");
}

TEST_F(SavedPointsListTest, displayText_otherWhiteSpace_standsAsStored) {
    const SavedPointDelegate delegate;
    EXPECT_EQ(delegate.displayText(QString(" Desk  left - x 1, y 2"), QLocale::c()), " Desk  left - x 1, y 2");
}

TEST_F(SavedPointsListTest, text_onItsWay_isEmpty) {
    load(2);
    rows.count = 1;
    EXPECT_EQ(text(1), "");
    EXPECT_EQ(text(0), "Point 0");
}

}  // namespace
}  // namespace vantrel::qt
