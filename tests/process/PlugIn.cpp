// A plug-in of the host with the log sink in it, to be unloaded.

#include <atomic>

namespace {
std::atomic<int> lines{0};
}

extern "C" __attribute__((visibility("default"))) bool PlugInLog(const wchar_t*, bool);
extern "C" bool PlugInLog(const wchar_t* /*line*/, bool /*isError*/) {
    ++lines;
    return true;
}

extern "C" __attribute__((visibility("default"))) int PlugInLines();
extern "C" int PlugInLines() {
    return lines;
}
