#include "helpers/settings/QtGuest.hpp"

#include <glib.h>
#include <gtest/gtest.h>

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <clocale>
#include <cstdio>

namespace vantrel::qt {
namespace {

template <typename Condition>
bool turnUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition() && std::chrono::steady_clock::now() < end) {
        g_main_context_iteration(nullptr, FALSE);
    }
    return condition();
}

TEST(QtGuest, start_personsLocale_leavesNumbersAlone) {
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    std::string problem;
    const auto guest = QtGuest::start("offscreen", problem);
    ASSERT_TRUE(guest) << problem;
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST(QtGuest, start_glibSwitchedOff_stillHasItsTimersServed) {
    setenv("QT_NO_GLIB", "1", 1);
    std::string problem;
    const auto guest = QtGuest::start("offscreen", problem);
    ASSERT_TRUE(guest) << problem;
    bool fired = false;
    QTimer::singleShot(1, [&fired] { fired = true; });
    EXPECT_TRUE(turnUntil([&fired] { return fired; }));
}

TEST(QtGuest, start_anySession_staysOutOfIt) {
    std::string problem;
    const auto guest = QtGuest::start("offscreen", problem);
    ASSERT_TRUE(guest) << problem;
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_DisableSessionManager));
    EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
}

TEST(QtGuest, start_pluginThatDoesNotExist_isSaidAndDoesNotEndTheProcess) {
    std::string problem;
    EXPECT_FALSE(QtGuest::start("nosuchsystem", problem));
    EXPECT_NE(problem.find("Qt's plugin for nosuchsystem does not load"), std::string::npos) << problem;
}

TEST(QtGuest, start_displayThatRefuses_isSaidAndDoesNotEndTheProcess) {
    setenv("DISPLAY", ":64999", 1);
    std::string problem;
    EXPECT_FALSE(QtGuest::start("xcb", problem));
    EXPECT_EQ(problem, "the X server takes no further connection");
}

TEST(QtGuest, windowHidden_deferredDeletions_areCarriedOut) {
    std::string problem;
    const auto guest = QtGuest::start("offscreen", problem);
    ASSERT_TRUE(guest) << problem;
    QWidget window;
    window.show();
    const QPointer<QObject> doomed = std::make_unique<QObject>().release();
    doomed->deleteLater();
    window.hide();
    EXPECT_TRUE(turnUntil([&doomed] { return doomed.isNull(); }));
}

TEST(QtGuest, destruction_deletionsStillDeferred_areCarriedOut) {
    std::string problem;
    auto guest = QtGuest::start("offscreen", problem);
    ASSERT_TRUE(guest) << problem;
    const QPointer<QObject> doomed = std::make_unique<QObject>().release();
    doomed->deleteLater();
    guest.reset();
    EXPECT_TRUE(doomed.isNull());
}

}  // namespace
}  // namespace vantrel::qt
