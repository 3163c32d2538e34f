#include "Vantrel/Desktop/RestingMemory/RestingMemory.hpp"

#include <malloc.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "Vantrel/Desktop/GLibHandles.hpp"
#include "Vantrel/Desktop/RestingMemory/MemoryMappings.hpp"

namespace vantrel::desktop {

namespace {

constexpr guint startTime = 5;  // seconds: panels have asked for the item by then

// What a jump runs through stays where it is: fetching it back would make the first jump a tenth of a millisecond
// slower.
constexpr std::array<std::string_view, 5> filesOfAJump{"vantrel", "libc.", "libglib-", "libxcb", "libsqlite3"};

bool isNeededForAJump(std::string_view file) {
    const std::string_view name = file.substr(file.rfind('/') + 1);
    return std::any_of(filesOfAJump.begin(), filesOfAJump.end(),
                       [&](std::string_view beginning) { return name.starts_with(beginning); });
}

}  // namespace

RestingMemory::RestingMemory() : source_(g_timeout_add_seconds(startTime, startIsOver, this)) {}

RestingMemory::~RestingMemory() {
    if (source_ != 0) {
        g_source_remove(source_);
    }
}

gboolean RestingMemory::startIsOver(gpointer data) {
    static_cast<RestingMemory*>(data)->source_ = 0;
    giveBack();
    return G_SOURCE_REMOVE;
}

void RestingMemory::giveBack() {
    gchar* rawText = nullptr;
    gsize length = 0;
    if (g_file_get_contents("/proc/self/smaps", &rawText, &length, nullptr)) {
        const GCharPointer text(rawText);
        for (const auto& [range, file] : unchangedFileMappings({text.get(), length})) {
            if (!isNeededForAJump(file)) {
                // The kernel's interface is a pointer; nothing is read or written through it.
                madvise(reinterpret_cast<void*>(range.begin), range.end - range.begin, MADV_DONTNEED);  // NOLINT
            }
        }
    }
    malloc_trim(0);
}

}  // namespace vantrel::desktop
