// A provider that answers as no provider should, chosen by the request's mode.

#include "module/mod_foo.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>

namespace {

CMLogCallback logLine = nullptr;
std::atomic<bool> isAsked{false};

int ModeOf(std::string_view request) {
    constexpr std::string_view kKey = "\"mode\":";
    const std::size_t at = request.find(kKey);
    return at == std::string_view::npos ? 0 : std::atoi(request.data() + at + kKey.size());
}

void Give(CMPacket& packet, const std::string& octets, std::size_t size) {
    packet.response = static_cast<char*>(std::malloc(octets.size() + 1));
    if (packet.response != nullptr) {
        std::memcpy(packet.response, octets.c_str(), octets.size() + 1);
        packet.responseSize = static_cast<uint32_t>(size);
    }
}

std::string Framed(std::size_t announced, std::string_view octets) {
    std::string text = "{\"errorCode\":0,\"fileDataSize\":" + std::to_string(announced) + "}";
    text += '\0';
    return text.append(octets);
}

// Uses more stack than there is.
void Recurse(int depth) {
    volatile char room[4096];
    room[0] = static_cast<char>(depth);
    if (depth >= 0) {
        Recurse(depth + room[0] * 0 + 1);
    }
    room[1] = room[0];
}

// The ways to take the host's process down, and one to keep it.
void Misbehave(int mode) {
    switch (mode) {
        case 101:
            std::raise(SIGSEGV);
            break;
        case 102:
            Recurse(0);
            break;
        case 103:
            std::abort();
        case 104:
            std::exit(0);
        case 105:
            throw std::runtime_error("out of\nluck");
        case 106:
            for (;;) {
                ::pause();
            }
        default:
            break;
    }
}

void Answer(CMPacket& packet) {
    const std::string_view request(packet.request, packet.requestLength);
    std::string text;
    Misbehave(request.ends_with("crash") ? 101 : ModeOf(request));
    switch (ModeOf(request)) {
        case 1:
            return;  // no answer at all
        case 2:
            text = "{\"errorCode\":0,\"text\":\"\xFF\x1B[31m";
            break;
        case 3:
            text = "{}";
            break;
        case 4:
            Give(packet, "{\"errorCode\":0}", 1U << 30U);
            return;
        case 5:
            text = Framed(7, "abc");
            break;
        case 6:  // as deep as one likes
            text = "{\"errorCode\":0,\"deep\":" + std::string(300000, '[') +
                   std::string(300000, ']') + "}";
            break;
        case 7:  // what the host said beside the text, over several lines
            text = packet.interactive ? "{\n \"errorCode\":0,\n \"interactive\":true}"
                                      : "{\n \"errorCode\":0,\n \"interactive\":false}";
            break;
        case 8:
            logLine(L"one\nline \x1B[2J", true);
            text = "{\"errorCode\":12345678901234567890}";
            break;
        case 9:  // what would steer a terminal, in a string and in a key
            text =
                "{\"errorCode\":0,\"t\\u000a\xE2\x80\xAE\":"
                "\"\xC2\x9B\x7F\xF3\xA0\x80\x81\xD0\x96\"}";
            break;
        default:  // the request itself, octet by octet
            text = Framed(request.size(), request);
            break;
    }
    Give(packet, text, text.size());
}

}  // namespace

void* CM_Init(int /*silent*/, CMLogCallback callback) {
    logLine = callback;
    if (std::getenv("FAKE_HANGS_AT_INIT") != nullptr) {
        ::pause();
    }
    if (std::getenv("FAKE_CRASHES_IN_A_THREAD") != nullptr) {
        std::thread([] {
            while (!isAsked) {
                ::usleep(1000);
            }
            std::raise(SIGSEGV);
        }).detach();
    }
#ifdef FAKE_GIVES_NO_MODULE
    return nullptr;
#else
    static char instance = 0;
    return &instance;
#endif
}

void CM_ProcessClientRequest(void* /*module*/, CMPacket* packet) {
    isAsked = true;
    Answer(*packet);
}

#ifndef FAKE_WITHOUT_FREE
void CM_Free(void* /*module*/) {}
#endif
