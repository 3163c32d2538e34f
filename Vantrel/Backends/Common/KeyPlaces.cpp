#include "Vantrel/Backends/Common/KeyPlaces.hpp"

#include <algorithm>
#include <array>

namespace vantrel::backend {

namespace {

struct VirtualKey {
    std::uint32_t keyCode;
    std::string_view xkbName;
};

// By place, after the ANSI keyboard. Print, Scroll Lock and Pause stand where F13 to F15 do on an Apple keyboard,
// Insert where Help does. 10 is the extra key of ISO keyboards. Volume and other media keys have no entry on purpose:
// they are not keys of a shortcut.
constexpr std::array virtualKeys = std::to_array<VirtualKey>({
    {0, "AC01"},   {1, "AC02"},   {2, "AC03"},   {3, "AC04"},   {4, "AC06"},   {5, "AC05"},   {6, "AB01"},
    {7, "AB02"},   {8, "AB03"},   {9, "AB04"},   {10, "LSGT"},  {11, "AB05"},  {12, "AD01"},  {13, "AD02"},
    {14, "AD03"},  {15, "AD04"},  {16, "AD06"},  {17, "AD05"},  {18, "AE01"},  {19, "AE02"},  {20, "AE03"},
    {21, "AE04"},  {22, "AE06"},  {23, "AE05"},  {24, "AE12"},  {25, "AE09"},  {26, "AE07"},  {27, "AE11"},
    {28, "AE08"},  {29, "AE10"},  {30, "AD12"},  {31, "AD09"},  {32, "AD07"},  {33, "AD11"},  {34, "AD08"},
    {35, "AD10"},  {36, "RTRN"},  {37, "AC09"},  {38, "AC07"},  {39, "AC11"},  {40, "AC08"},  {41, "AC10"},
    {42, "BKSL"},  {43, "AB08"},  {44, "AB10"},  {45, "AB06"},  {46, "AB07"},  {47, "AB09"},  {48, "TAB"},
    {49, "SPCE"},  {50, "TLDE"},  {51, "BKSP"},  {53, "ESC"},   {54, "RWIN"},  {55, "LWIN"},  {56, "LFSH"},
    {57, "CAPS"},  {58, "LALT"},  {59, "LCTL"},  {60, "RTSH"},  {61, "RALT"},  {62, "RCTL"},  {64, "FK17"},
    {65, "KPDL"},  {67, "KPMU"},  {69, "KPAD"},  {71, "NMLK"},  {75, "KPDV"},  {76, "KPEN"},  {78, "KPSU"},
    {79, "FK18"},  {80, "FK19"},  {81, "KPEQ"},  {82, "KP0"},   {83, "KP1"},   {84, "KP2"},   {85, "KP3"},
    {86, "KP4"},   {87, "KP5"},   {88, "KP6"},   {89, "KP7"},   {90, "FK20"},  {91, "KP8"},   {92, "KP9"},
    {93, "AE13"},  {94, "AB11"},  {96, "FK05"},  {97, "FK06"},  {98, "FK07"},  {99, "FK03"},  {100, "FK08"},
    {101, "FK09"}, {103, "FK11"}, {105, "PRSC"}, {105, "FK13"}, {106, "FK16"}, {107, "SCLK"}, {107, "FK14"},
    {109, "FK10"}, {110, "COMP"}, {110, "MENU"}, {111, "FK12"}, {113, "PAUS"}, {113, "FK15"}, {114, "INS"},
    {115, "HOME"}, {116, "PGUP"}, {117, "DELE"}, {118, "FK04"}, {119, "END"},  {120, "FK02"}, {121, "PGDN"},
    {122, "FK01"}, {123, "LEFT"}, {124, "RGHT"}, {125, "DOWN"}, {126, "UP"},
});

}  // namespace

std::vector<std::string_view> xkbNamesForVirtualKey(std::uint32_t keyCode) {
    std::vector<std::string_view> names;
    for (const VirtualKey& key : virtualKeys) {
        if (key.keyCode == keyCode) {
            names.push_back(key.xkbName);
        }
    }
    return names;
}

std::optional<std::uint32_t> virtualKeyForXkbName(std::string_view name) {
    const auto* key = std::find_if(virtualKeys.begin(), virtualKeys.end(),
                                   [name](const VirtualKey& candidate) { return candidate.xkbName == name; });
    if (key == virtualKeys.end()) {
        return std::nullopt;
    }
    return key->keyCode;
}

}  // namespace vantrel::backend
