#include "helpers/settings/QtApplication.hpp"

#include <gtest/gtest.h>

namespace vantrel::qt {
namespace {

TEST(QtApplication, start_anySession_staysOutOfIt) {
    std::string problem;
    const auto application = QtApplication::start("offscreen", problem);
    ASSERT_TRUE(application) << problem;
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_DisableSessionManager));
    EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
    EXPECT_EQ(QGuiApplication::desktopFileName(), "org.vantrel.Vantrel");
}

TEST(QtApplication, start_pluginThatDoesNotExist_isSaidAndDoesNotEndTheProcess) {
    std::string problem;
    EXPECT_FALSE(QtApplication::start("nosuchsystem", problem));
    EXPECT_NE(problem.find("Qt's plugin for nosuchsystem does not load"), std::string::npos) << problem;
}

TEST(QtApplication, start_displayThatRefuses_isSaidAndDoesNotEndTheProcess) {
    setenv("DISPLAY", ":64999", 1);
    std::string problem;
    EXPECT_FALSE(QtApplication::start("xcb", problem));
    EXPECT_EQ(problem, "the X server takes no further connection");
}

}  // namespace
}  // namespace vantrel::qt
