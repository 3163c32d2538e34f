#include "Vantrel/Desktop/Loop/URLQueue.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "Vantrel/Desktop/Loop/GLibMainQueue.hpp"
#include "Vantrel/Desktop/Loop/GLibRunLoop.hpp"
#include "tests/unit/loop/TestLoop.hpp"

namespace vantrel::desktop {
namespace {

using URLs = std::vector<std::string>;

URLs numbered(std::size_t first, std::size_t count) {
    URLs urls;
    for (std::size_t index = 0; index < count; ++index) {
        urls.push_back("vantrel:" + std::to_string(first + index));
    }
    return urls;
}

struct URLQueueFixture {
    TestLoop loop;
    URLs opened;
    URLQueue queue{[this](std::string url) { opened.push_back(std::move(url)); }, loop.context()};
};

TEST(URLQueue, append_beforeResume_waits) {
    URLQueueFixture fixture;
    fixture.queue.append({"vantrel:next"});
    EXPECT_FALSE(fixture.loop.turn());
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
    fixture.queue.resume();
    EXPECT_TRUE(fixture.loop.turn());
    EXPECT_EQ(fixture.opened, URLs{"vantrel:next"});
}

TEST(URLQueue, append_longList_comesOneInATurnAndInOrder) {
    URLQueueFixture fixture;
    fixture.queue.resume();
    fixture.queue.append(numbered(0, 20));
    for (std::size_t turns = 1; turns <= 20; ++turns) {
        fixture.loop.turn();
        EXPECT_EQ(fixture.opened, numbered(0, turns));
    }
    while (fixture.loop.turn()) {
    }
    EXPECT_EQ(fixture.opened, numbered(0, 20));
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
}

TEST(URLQueue, append_severalLists_keepTheirOrder) {
    URLQueueFixture fixture;
    fixture.queue.append(numbered(0, 20));
    fixture.queue.append(URLs{});
    fixture.queue.append(numbered(20, 1));
    fixture.queue.resume();
    fixture.loop.turn();
    fixture.queue.append(numbered(21, 30));
    while (fixture.loop.turn()) {
    }
    EXPECT_EQ(fixture.opened, numbered(0, 51));
}

TEST(URLQueue, append_anyText_arrivesAsItCame) {
    URLQueueFixture fixture;
    const URLs urls{"", "vantrel:next", "VANTREL:%2D", "\xff\xfe", std::string("a\0b", 3), std::string(200000, 'x')};
    fixture.queue.resume();
    fixture.queue.append(urls);
    while (fixture.loop.turn()) {
    }
    EXPECT_EQ(fixture.opened, urls);
}

TEST(URLQueue, append_emptyList_opensNothing) {
    URLQueueFixture fixture;
    fixture.queue.resume();
    fixture.queue.append(URLs{});
    while (fixture.loop.turn()) {
    }
    EXPECT_TRUE(fixture.opened.empty());
}

TEST(URLQueue, append_reader_isReadOneInATurn) {
    URLQueueFixture fixture;
    std::size_t read = 0;
    fixture.queue.resume();
    fixture.queue.append([&read](std::string& url) {
        url = "vantrel:" + std::to_string(read);
        return read++ < 100;
    });
    EXPECT_EQ(read, 0U);
    fixture.loop.turn();
    EXPECT_EQ(read, 1U);
    while (fixture.loop.turn()) {
    }
    EXPECT_EQ(fixture.opened, numbered(0, 100));
}

TEST(URLQueue, serve_hotKeyTaskAmongAHundredThousand_waitsForOneURLAtMost) {
    URLQueueFixture fixture;
    GLibMainQueue mainQueue(fixture.loop.context());
    fixture.queue.resume();
    fixture.queue.append(numbered(0, 100000));
    while (fixture.opened.size() < 50000) {
        fixture.loop.turn();
        const std::size_t before = fixture.opened.size();
        bool ran = false;
        mainQueue.async([&ran] { ran = true; });
        fixture.loop.turn();
        ASSERT_TRUE(ran);
        ASSERT_EQ(fixture.opened.size(), before);
    }
    while (fixture.loop.turn()) {
    }
    EXPECT_EQ(fixture.opened, numbered(0, 100000));
}

TEST(URLQueue, serve_timerIsDue_theTimerGoesFirst) {
    URLQueueFixture fixture;
    GLibRunLoop runLoop(fixture.loop.context());
    std::size_t openedAtFiring = 1;
    const auto timer =
        runLoop.scheduledTimer(Seconds(0.001), false, [&](Timer&) { openedAtFiring = fixture.opened.size(); });
    fixture.queue.append(numbered(0, 10));
    fixture.queue.resume();
    g_usleep(2000);
    fixture.loop.turn();
    EXPECT_EQ(openedAtFiring, 0U);
}

TEST(URLQueue, append_fromTheSink_comesAfterWhatWaits) {
    TestLoop loop;
    URLs opened;
    URLQueue* appendTo = nullptr;
    URLQueue queue(
        [&](std::string url) {
            opened.push_back(std::move(url));
            if (URLQueue* const target = std::exchange(appendTo, nullptr)) {
                target->append({"last"});
            }
        },
        loop.context());
    appendTo = &queue;
    queue.append({"first", "second"});
    queue.resume();
    while (loop.turn()) {
    }
    EXPECT_EQ(opened, (URLs{"first", "second", "last"}));
}

}  // namespace
}  // namespace vantrel::desktop
