// A program without any protection: the check that finds nothing amiss here would find nothing anywhere.
#include <cstdio>

int main(int count, char** arguments) {
    char text[16];
    std::snprintf(text, sizeof text, "%s", arguments[count - 1]);
    return std::puts(text) < 0 ? 1 : 0;
}
