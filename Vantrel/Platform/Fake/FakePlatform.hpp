#pragma once

#include "Vantrel/Platform/Desktop/GLibURLParser.hpp"
#include "Vantrel/Platform/Fake/FakeApplication.hpp"
#include "Vantrel/Platform/Fake/FakeDisplays.hpp"
#include "Vantrel/Platform/Fake/FakeHotKeys.hpp"
#include "Vantrel/Platform/Fake/FakeMainQueue.hpp"
#include "Vantrel/Platform/Fake/FakePointer.hpp"
#include "Vantrel/Platform/Fake/FakePreferencesWindowView.hpp"
#include "Vantrel/Platform/Fake/FakeSoundPlayer.hpp"
#include "Vantrel/Platform/Fake/FakeStatusBar.hpp"
#include "Vantrel/Platform/Fake/FakeUUIDGenerator.hpp"
#include "Vantrel/Platform/Fake/FakeUserDefaults.hpp"
#include "Vantrel/Platform/Fake/Journal.hpp"
#include "Vantrel/Platform/Platform.hpp"

namespace vantrel::fake {

/// A platform without a desktop: tests set its state, crank its clock, and read what was asked of it in one journal.
/// URLs are split by the real parser, which needs no desktop.
class FakePlatform {
  public:
    [[nodiscard]] Platform platform() {
        return Platform{application,
                        displays,
                        pointer,
                        pointer,
                        hotKeys,
                        mainQueue,
                        mainQueue,
                        defaults,
                        statusBar,
                        sounds,
                        uuids,
                        urls,
                        preferencesWindowViews};
    }

    Journal journal;
    FakeApplication application{journal};
    FakeDisplays displays{journal};
    FakePointer pointer{journal};
    FakeHotKeys hotKeys{journal};
    FakeMainQueue mainQueue{journal};
    FakeUserDefaults defaults{journal};
    FakeStatusBar statusBar{journal};
    FakeSoundPlayer sounds{journal};
    FakeUUIDGenerator uuids;
    desktop::GLibURLParser urls;
    FakePreferencesWindowViewFactory preferencesWindowViews{journal};
};

}  // namespace vantrel::fake
