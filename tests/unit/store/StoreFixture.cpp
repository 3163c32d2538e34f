#include "StoreFixture.hpp"

#include <glib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace vantrel::desktop {

Outsider::Outsider(const std::filesystem::path& file) {
    sqlite3* handle = nullptr;
    EXPECT_EQ(sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
    database_.reset(handle);
    // A reader must leave the log to the store under test.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

int Outsider::execute(const std::string& statements) {
    return sqlite3_exec(database_.get(), statements.c_str(), nullptr, nullptr, nullptr);
}

std::vector<std::string> Outsider::rows(const std::string& query) {
    std::vector<std::string> result;
    const auto collect = [](void* data, int count, char** values, char**) {
        std::string row;
        for (int column = 0; column < count; ++column) {
            row += (column == 0 ? "" : "|");
            row += values[column] == nullptr ? "" : values[column];
        }
        static_cast<std::vector<std::string>*>(data)->push_back(row);
        return 0;
    };
    EXPECT_EQ(sqlite3_exec(database_.get(), query.c_str(), collect, &result, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database_.get());
    return result;
}

std::string Outsider::text(const std::string& query) {
    const auto found = rows(query);
    return found.size() == 1 ? found.front() : std::to_string(found.size()) + " rows";
}

StoreTest::StoreTest() {
    std::string name = (std::filesystem::temp_directory_path() / "vantrel-store-XXXXXX").string();
    EXPECT_NE(::mkdtemp(name.data()), nullptr);
    directory_ = name;
    file_ = directory_ / "vantrel" / "defaults.sqlite3";
}

StoreTest::~StoreTest() {
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

StoreOptions StoreTest::quietOptions() {
    StoreOptions options;
    options.checkpoints.idle = std::chrono::hours(1);
    options.checkpoints.longLog = 1'000'000;
    options.patience = std::chrono::milliseconds(20);
    options.firstRetry = std::chrono::hours(1);
    return options;
}

std::unique_ptr<SQLiteUserDefaults> StoreTest::openStore(StoreOptions options) const {
    return std::make_unique<SQLiteUserDefaults>(file_, options);
}

void StoreTest::makeStore() const {
    const auto store = openStore();
    store->setObject(std::string("manual"), "mode");
    store->setBool(false, "soundEnabled");
    store->setObjects({{"primaryHotKeyCode", std::int64_t{2}}, {"primaryHotKeyModifiers", std::int64_t{6912}}});
    store->setObject(DefaultsData{"[]"}, "savedPoints");
}

std::vector<std::string> StoreTest::namesSetAside() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(file_.parent_path())) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("defaults.sqlite3.damaged-")) {
            names.push_back(name);
        }
    }
    std::ranges::sort(names);
    return names;
}

bool loopUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    // The timer makes the blocking iteration come back to look at the condition and the clock.
    GSource* ticks = g_timeout_source_new(5);
    g_source_set_callback(
        ticks, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
    g_source_attach(ticks, nullptr);
    bool holds = condition();
    while (!holds && std::chrono::steady_clock::now() < end) {
        g_main_context_iteration(nullptr, TRUE);
        holds = condition();
    }
    g_source_destroy(ticks);
    g_source_unref(ticks);
    return holds;
}

void serveLoop() {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
}

std::string contentsOf(const std::filesystem::path& file) {
    const std::ifstream stream(file, std::ios::binary);
    std::ostringstream contents;
    contents << stream.rdbuf();
    return contents.str();
}

void writeContents(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

unsigned modeOf(const std::filesystem::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
}

std::size_t lineCount(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

}  // namespace vantrel::desktop
