// The short text on the screen of a compositor.
#include <cstdlib>

#include "helpers/messages/CairoHandles.hpp"
#include "helpers/messages/TextBox.hpp"
#include "tests/desk/messages/support/MessagesDesk.hpp"

namespace vantrel::desk {
namespace {

using overlay::Rect;

/// Whether it stands near the top of a display of that width, in the middle.
bool isAtTheTop(const Rect& seen, int displayWidth) {
    return seen.y == 48 && std::abs(2 * seen.x + seen.width - displayWidth) <= 2;
}

class LayerText : public MessagesDesk {
  protected:
    using MessagesDesk::MessagesDesk;
};

TEST_F(LayerText, text_shown_isSeenOnEveryDisplayUntilItIsHidden) {
    startOverlay();
    rememberTheScreen();
    show("Saved");
    for (const auto& [output, width] : {std::pair{mainOutput, mainWidth}, {secondOutput, secondWidth}}) {
        ASSERT_TRUE(waitUntilSeenOn(output));
        EXPECT_TRUE(isAtTheTop(*seenOn(output), width)) << output;
    }
    hide();
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_F(LayerText, text_shown_leavesPointerAndKeyboardToTheProgramBeneath) {
    const auto window = openWindow();
    startOverlay();
    movePointer({.x = -600, .y = 300});
    rememberTheScreen();
    show("A message that is wide enough to lie above the pointer");
    ASSERT_TRUE(waitUntilSeenOn(secondOutput));
    const Rect seen = *seenOn(secondOutput);
    // The person follows the pointer with a window behind everything.
    const LayoutPoint onTheText{.x = secondCorner.x + seen.x + seen.width / 2.0,
                                .y = secondCorner.y + seen.y + seen.height / 2.0};
    movePointer(onTheText);
    EXPECT_TRUE(desk.person().staysAt(onTheText));
    const std::size_t presses = window->presses();
    desk.person().type({keys::d});
    desk.person().synchronise();
    EXPECT_TRUE(waitUntil([&] { return window->presses() == presses + 1; }));
    EXPECT_TRUE(window->hasKeyboard());
}

TEST_F(LayerText, text_comingUnderTheRestingPointer_doesNotTakeIt) {
    startOverlay();
    const LayoutPoint onTheText{.x = -320, .y = 165};
    movePointer(onTheText);
    rememberTheScreen();
    show("Saved");
    ASSERT_TRUE(waitUntilSeenOn(secondOutput));
    EXPECT_TRUE(desk.person().staysAt(onTheText));
    desk.person().pressButton();
    desk.person().releaseButton();
    EXPECT_TRUE(desk.person().waitForClicks(1));
    EXPECT_TRUE(desk.person().staysAt(onTheText));
}

TEST_F(LayerText, text_another_takesThePlaceOfTheFormer) {
    startOverlay();
    rememberTheScreen();
    show("Saved");
    ASSERT_TRUE(waitUntilSeenOn(mainOutput));
    const int width = seenOn(mainOutput)->width;
    show("A longer message");
    EXPECT_TRUE(waitUntil([&] {
        const auto seen = seenOn(mainOutput);
        return seen && seen->width > width && isAtTheTop(*seen, mainWidth);
    }));
    show("Saved");
    EXPECT_TRUE(waitUntil([&] {
        const auto seen = seenOn(mainOutput);
        return seen && seen->width == width && isAtTheTop(*seen, mainWidth);
    }));
}

TEST_F(LayerText, text_ofTheSameSize_isDrawnAnew) {
    startOverlay();
    rememberTheScreen();
    show("Saved 6");
    ASSERT_TRUE(waitUntilSeenOn(mainOutput));
    const Picture former = camera.take(mainOutput);
    show("Saved 9");
    EXPECT_TRUE(waitUntil([&] { return difference(former, camera.take(mainOutput)).has_value(); }));
}

TEST_F(LayerText, text_anyText_fitsOnTheDisplay) {
    startOverlay();
    rememberTheScreen();
    std::string endless;
    for (int word = 0; word < 100; ++word) {
        endless += "Bürö ";
    }
    for (const std::string& text : {std::string("عربى"), std::string("東京 🖥"), endless}) {
        show(text);
        ASSERT_TRUE(waitUntilSeenOn(secondOutput)) << text.substr(0, 20);
        EXPECT_LE(seenOn(secondOutput)->width, secondWidth * 7 / 10);
        EXPECT_GT(seenOn(secondOutput)->width, 20);
        hide();
        ASSERT_TRUE(waitUntilNothingIsSeen());
    }
}

TEST_F(LayerText, display_pluggedInWhileATextIsShown_showsItToo) {
    startOverlay();
    rememberTheScreen();
    show("Saved");
    ASSERT_TRUE(waitUntilSeenOn(mainOutput));
    desk.control().run("output HEADLESS-3 mode 800x600 position 800 0");
    desk.control().run("create_output");
    Camera other(socket());
    ASSERT_TRUE(waitUntil([&] {
        const Picture picture = other.take("HEADLESS-3");
        // It has one colour but for what we show.
        const Picture plain{.width = picture.width,
                            .height = picture.height,
                            .pixels = std::vector(picture.pixels.size(), picture.pixels.front())};
        const auto seen = difference(plain, picture);
        return seen && isAtTheTop(*seen, 800);
    }));
}

TEST_F(LayerText, display_unpluggedWhileATextIsShown_theOthersKeepIt) {
    startOverlay();
    rememberTheScreen();
    show("Saved");
    ASSERT_TRUE(waitUntilSeenOn(secondOutput));
    if (!unplug(secondOutput)) {
        GTEST_SKIP() << "this sway cannot unplug a display";
    }
    show("A longer message");
    EXPECT_TRUE(waitUntil([&] {
        const auto seen = seenOn(mainOutput);
        return seen && seen->width > 100 && isAtTheTop(*seen, mainWidth);
    }));
    EXPECT_TRUE(agent.isOpen());
}

TEST_F(LayerText, agent_hangsUp_takesTheTextAlong) {
    startOverlay();
    rememberTheScreen();
    show("Saved");
    ASSERT_TRUE(waitUntilSeenOn(mainOutput));
    agent.close();
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_F(LayerText, program_killed_takesTheTextAlong) {
    startOverlay();
    rememberTheScreen();
    show("Saved");
    ASSERT_TRUE(waitUntilSeenOn(mainOutput));
    killOverlay();
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_F(LayerText, compositor_goesAway_endsTheProgram) {
    startOverlay();
    rememberTheScreen();
    show("Saved");
    ASSERT_TRUE(waitUntilSeenOn(mainOutput));
    desk.sway().stop();
    EXPECT_TRUE(waitUntil([&] {
        agent.receive();
        return !agent.isOpen();
    }));
}

struct Scale {
    const char* name;
    const char* value;
    double factor;
    const char* transform;
};

class LayerTextScale : public MessagesDesk, public testing::WithParamInterface<Scale> {
  protected:
    LayerTextScale()
        : MessagesDesk({.outputs = {{.mode = "1500x900", .scale = GetParam().value, .transform = GetParam().transform},
                                    {.mode = "800x600", .x = -800, .y = 0}},
                        .configuration = {},
                        .files = {}}) {}

    /// The text as it is drawn for pixels of that scale, on the colour.
    static Picture drawn(const std::string& text, double scale, std::uint32_t background) {
        const overlay::Typesetter typesetter;
        const overlay::TextBox box(typesetter, text, {.points = 12, .isSemibold = true}, {0, 0, 1500, 900});
        const int width = static_cast<int>(std::lround(box.bounds().width * scale));
        const int height = static_cast<int>(std::lround(box.bounds().height * scale));
        const overlay::SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
        const overlay::CairoPointer context(cairo_create(surface.get()));
        const auto part = [background](int bits) { return static_cast<double>((background >> bits) & 0xFF) / 255; };
        cairo_set_source_rgb(context.get(), part(16), part(8), part(0));
        cairo_paint(context.get());
        cairo_push_group(context.get());
        cairo_scale(context.get(), scale, scale);
        box.draw(context.get(), true);
        cairo_pop_group_to_source(context.get());
        cairo_paint(context.get());
        cairo_surface_flush(surface.get());
        Picture picture{.width = width, .height = height, .pixels = {}};
        for (int y = 0; y < height; ++y) {
            const auto* const line = reinterpret_cast<const std::uint32_t*>(
                cairo_image_surface_get_data(surface.get()) + y * cairo_image_surface_get_stride(surface.get()));
            picture.pixels.insert(picture.pixels.end(), line, line + width);
        }
        return picture;
    }

    /// The largest difference of a colour's part between the drawn text and what stands at the place.
    static int largestDifference(const Picture& screen, const Picture& text, int left, int top) {
        int largest = 0;
        for (int y = 0; y < text.height; ++y) {
            for (int x = 0; x < text.width; ++x) {
                for (const int bits : {0, 8, 16}) {
                    const int there = static_cast<int>((screen.at(left + x, top + y) >> bits) & 0xFF);
                    const int wanted = static_cast<int>((text.at(x, y) >> bits) & 0xFF);
                    largest = std::max(largest, std::abs(there - wanted));
                }
            }
        }
        return largest;
    }
};

TEST_P(LayerTextScale, text_scaledDisplay_isDrawnInItsOwnPixels) {
    startOverlay();
    rememberTheScreen();
    show("Saved");
    ASSERT_TRUE(waitUntilSeenOn(mainOutput));
    const Rect seen = *seenOn(mainOutput);
    const Picture screen = camera.take(mainOutput);
    const Picture text = drawn("Saved", GetParam().factor, before.at(mainOutput).at(seen.x, seen.y));
    EXPECT_LE(largestDifference(screen, text, seen.x, seen.y), 4) << seen.width << "x" << seen.height;
}

INSTANTIATE_TEST_SUITE_P(Scales, LayerTextScale,
                         testing::Values(Scale{"one", "1", 1, "normal"},
                                         Scale{"oneAndAQuarter", "1.25", 1.25, "normal"},
                                         Scale{"oneAndAHalf", "1.5", 1.5, "normal"}, Scale{"two", "2", 2, "normal"}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vantrel::desk
