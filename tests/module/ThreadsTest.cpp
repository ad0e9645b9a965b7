// Requests of the same clients from several threads, with releases and sweeps among them. The
// thread sanitizer sees what the expectations cannot.

#include "module/ClientContext.h"
#include "tests/module/ModuleLibrary.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kThreads = 4;

template <class Function>
void InThreads(Function function) {
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back(function, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace

TEST_F(LibraryTest, RequestsAndReleasesOfOneClientAreSafe) {
    Init();
    const std::string done = R"({"errorCode":0,"errorMessage":"DONE")";
    const std::string store = R"({"location":"sscu","address":"","name":"a name too long for )"
                              R"(the string's own room"})";
    const std::string one = done + R"(,"storeAddresses":[)" + store + "]}";
    const std::string none = done + R"(,"storeAddresses":[]})";
    const auto text = [this](std::string request) {
        const CMPacket packet = Process(request.data(), request.size());
        std::string answer(packet.response, packet.responseSize);
        std::free(packet.response);
        return answer;
    };
    InThreads([&](int thread) {
        for (int i = 0; i < 250; ++i) {
            const std::string client =
                R"(,"clientId":")" + std::string(i % 3 == 0 ? "common" : "other") + "\"}";
            const std::string got = text(R"({"mode":47)" + client);
            EXPECT_TRUE(got == one || got == none) << got;
            EXPECT_EQ(text(R"({"mode":36,"storeAddress":)" + store + client), done + "}");
            EXPECT_EQ(text(R"({"mode":37)" + client).find(done), 0U);
            if (i % 5 == thread) {
                EXPECT_EQ(text(R"({"mode":61)" + client), done + "}");
            }
            EXPECT_EQ(text(R"({"mode":13})").find(R"({"errorCode":16303)"), 0U);
        }
    });
    EXPECT_GE(LogRecorder::Take().size(), std::size_t{kThreads} * 250 * 4);
}

TEST(ThreadsTest, SweepsAmongAcquisitionsAreSafe) {
    static std::atomic<std::uint32_t> now;
    now = 0;
    CClientContextArray clients(nullptr, [] { return now.load(); });
    clients.SetMaxMemory(10000);  // less than what they want
    InThreads([&](int thread) {
        for (std::uint32_t i = 0; i < 500; ++i) {
            now += CClientContextArray::kSweepIntervalMs / 4;
            const std::wstring id = std::to_wstring(i % 50);
            const auto use = clients.Use(id);
            ca::StoreAddresses stores = *clients.CurrentStores(id);
            stores.resize((stores.size() + 1) % 3);
            clients.ReplaceStores(id, stores);
            if (thread == 0) {
                clients.Remove(std::to_wstring((i + 25) % 50));
            }
        }
    });
    EXPECT_LE(clients.Count(), 50U);
    EXPECT_LE(clients.Memory(), 10000U);
    clients.CleanUp();
    EXPECT_EQ(clients.Count(), 0U);
}
