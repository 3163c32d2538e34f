#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "SeededRandom.hpp"
#include "VantrelCore/JSONDecoder.hpp"
#include "VantrelCore/JSONEncoder.hpp"

namespace vantrel {
namespace {

using Limits = std::numeric_limits<double>;

std::uint64_t bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

/// Fails unless the point comes back with the same 64 bits.
void expectSameBits(const VantrelPoint& point) {
    const auto text = JSONEncoder().encode(point);
    ASSERT_TRUE(text);
    const auto back = JSONDecoder().decodePoint(*text);
    ASSERT_TRUE(back) << *text;
    EXPECT_EQ(bits(back->x), bits(point.x)) << *text;
    EXPECT_EQ(bits(back->y), bits(point.y)) << *text;
}

TEST(JSONRoundTrip, point_notableValues_keepTheirBits) {
    for (const double value : {0.0,
                               -0.0,
                               1.0,
                               -1.0,
                               10.0,
                               0.1,
                               1e300,
                               -1e300,
                               1e22,
                               1e23,
                               9007199254740991.0,
                               9007199254740992.0,
                               9007199254740994.0,
                               9223372036854775807.0,
                               18446744073709551615.0,
                               Limits::max(),
                               Limits::lowest(),
                               Limits::min(),
                               -Limits::min(),
                               Limits::denorm_min(),
                               -Limits::denorm_min(),
                               Limits::epsilon(),
                               std::nextafter(Limits::min(), 0.0),
                               std::nextafter(1.0, 2.0),
                               std::nextafter(24.0, 0.0)}) {
        expectSameBits(VantrelPoint(value, -value));
    }
}

TEST(JSONRoundTrip, point_integers_keepTheirBits) {
    for (int value = -70000; value <= 70000; value += 7) {
        expectSameBits(VantrelPoint(value, value + 0.5));
    }
}

TEST(JSONRoundTrip, point_everyPowerOfTwo_keepsItsBits) {
    for (int exponent = -1074; exponent < 1024; ++exponent) {
        const double value = std::ldexp(1.0, exponent);
        expectSameBits(VantrelPoint(value, std::nextafter(-value, 0.0)));
    }
}

TEST(JSONRoundTrip, point_randomBitPatterns_keepTheirBitsOrAreRefused) {
    auto random = seededRandom();
    for (int round = 0; round < 20000; ++round) {
        const auto x = std::bit_cast<double>(random());
        const auto y = std::bit_cast<double>(random());
        if (std::isfinite(x) && std::isfinite(y)) {
            expectSameBits(VantrelPoint(x, y));
        } else {
            EXPECT_EQ(JSONEncoder().encode(VantrelPoint(x, y)), std::nullopt);
        }
    }
}

TEST(JSONRoundTrip, point_randomSubnormals_keepTheirBits) {
    auto random = seededRandom();
    constexpr std::uint64_t signAndFraction = 0x800FFFFFFFFFFFFFU;
    for (int round = 0; round < 5000; ++round) {
        expectSameBits(VantrelPoint(std::bit_cast<double>(random() & signAndFraction),
                                    std::bit_cast<double>(random() & signAndFraction)));
    }
}

std::string printed(const char* format, int precision, double value) {
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), format, precision, value);
    return text.data();
}

/// The shortest text with an exponent that reads back, found by trying each precision in turn.
std::string shortestWithExponent(double value) {
    for (int precision = 0; precision < 16; ++precision) {
        std::string text = printed("%.*e", precision, value);
        if (std::strtod(text.c_str(), nullptr) == value) {
            return text;
        }
    }
    return printed("%.*e", 16, value);
}

TEST(JSONRoundTrip, point_randomNumbers_takeNoMoreRoomThanNeeded) {
    auto random = seededRandom();
    std::uniform_real_distribution<double> coordinates(-10000, 10000);
    for (int round = 0; round < 5000; ++round) {
        double value = std::bit_cast<double>(random());
        if (round % 2 == 0 || !std::isfinite(value)) {
            value = std::round(coordinates(random) * 100) / 100;
        }
        const std::string text = JSONEncoder().encode(VantrelPoint(value, 0)).value();
        const std::string number = text.substr(5, text.find(',') - 5);
        EXPECT_LE(number.size(), shortestWithExponent(value).size());
    }
}

TEST(JSONRoundTrip, point_wholeNumbers_haveNeitherPointNorExponent) {
    auto random = seededRandom();
    for (int round = 0; round < 5000; ++round) {
        const double value = std::trunc(std::ldexp(static_cast<double>(random() >> 11U), -(round % 53)));
        const std::string digits = printed("%.*f", 0, value);
        EXPECT_EQ(JSONEncoder().encode(VantrelPoint(value, value)), R"({"x":)" + digits + R"(,"y":)" + digits + "}");
    }
}

TEST(JSONRoundTrip, display_randomValues_comeBack) {
    auto random = seededRandom();
    for (int round = 0; round < 2000; ++round) {
        std::array<double, 4> values{};
        for (double& value : values) {
            do {
                value = std::bit_cast<double>(random());
            } while (!std::isfinite(value));
        }
        const DisplaySnapshot display(static_cast<std::uint32_t>(random()), values[0], values[1], values[2], values[3]);
        EXPECT_EQ(JSONDecoder().decodeDisplay(JSONEncoder().encode(display).value()), display);
    }
}

/// A name of random Unicode characters, NUL, quotes and control characters among them.
std::string randomName(std::mt19937_64& random) {
    std::string name;
    for (std::size_t length = random() % 12; length > 0; --length) {
        switch (random() % 4) {
            case 0:
                name += static_cast<char>(random() % 0x20);
                break;
            case 1:
                name += static_cast<char>(0x20 + random() % 0x60);
                break;
            case 2:
                name += {static_cast<char>(0xC2 + random() % 0x1E), static_cast<char>(0x80 + random() % 0x40)};
                break;
            default:
                name += "\xF0\x9F\x96\xB1";
                break;
        }
    }
    return name;
}

TEST(JSONRoundTrip, savedPoints_randomLists_comeBack) {
    auto random = seededRandom();
    for (int round = 0; round < 300; ++round) {
        std::vector<SavedPoint> list(random() % 8);
        for (SavedPoint& point : list) {
            for (std::uint8_t& byte : point.id.bytes) {
                byte = static_cast<std::uint8_t>(random());
            }
            point.name = randomName(random);
            point.point = VantrelPoint(static_cast<double>(random() % 8192) - 4096, static_cast<double>(random()) / 3);
            if (random() % 2 == 0) {
                point.displayID = static_cast<std::uint32_t>(random());
            }
        }
        const std::string text = JSONEncoder().encode(list).value();
        EXPECT_EQ(JSONDecoder().decodeSavedPoints(text), list) << text;
        for (const SavedPoint& point : list) {
            EXPECT_EQ(JSONDecoder().decodeSavedPoint(JSONEncoder().encode(point).value()), point);
        }
    }
}

TEST(JSONRoundTrip, positions_randomMaps_comeBack) {
    auto random = seededRandom();
    for (int round = 0; round < 300; ++round) {
        RememberedPositions positions;
        for (std::size_t count = random() % 20; count > 0; --count) {
            positions[static_cast<std::uint32_t>(random())] =
                VantrelPoint(static_cast<double>(random() % 100000) / 8, static_cast<double>(random() >> 11U));
        }
        const auto back = JSONDecoder().decodePositions(JSONEncoder().encode(positions).value());
        ASSERT_TRUE(back);
        RememberedPositions parsed;
        for (const auto& [name, point] : *back) {
            std::uint32_t displayID = 0;
            const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), displayID);
            EXPECT_TRUE(error == std::errc() && end == name.data() + name.size()) << name;
            parsed[displayID] = point;
        }
        EXPECT_EQ(parsed, positions);
    }
}

TEST(JSONDecoder, everyForm_randomDamage_neverCrashes) {
    auto random = seededRandom();
    const std::string sound =
        R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"P\n","point":{"x":-300.5,"y":4e2},"displayID":7}])";
    const JSONDecoder decoder;
    std::size_t stillSound = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string text = sound;
        for (std::size_t changes = 1 + random() % 3; changes > 0; --changes) {
            text[random() % text.size()] = static_cast<char>(random());
        }
        const auto list = decoder.decodeSavedPoints(text);
        if (list) {
            ++stillSound;
            EXPECT_EQ(list->size(), 1U);
            EXPECT_EQ(decoder.decodeSavedPoints(JSONEncoder().encode(*list).value()), list) << text;
        }
        static_cast<void>(decoder.decodePositions(text));
        static_cast<void>(decoder.decodePoint(text));
    }
    // Changes within the name and the numbers leave the form sound: that both kinds occur shows that both were tried.
    EXPECT_GT(stillSound, 0U);
    EXPECT_LT(stillSound, 5000U);
}

}  // namespace
}  // namespace vantrel
