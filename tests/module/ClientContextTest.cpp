#include "module/ClientContext.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

std::uint32_t now = 0;

std::uint32_t TestClock() {
    return now;
}

ca::StoreAddresses OneStore(const wchar_t* name) {
    ca::StoreAddresses stores;
    stores.emplace_back(name, /*machine=*/false);
    return stores;
}

class ClientContextTest : public testing::Test {
  protected:
    ClientContextTest() { now = kStart; }

    // So late that every test runs across the wrap of the counter.
    static constexpr std::uint32_t kStart = 0xFFFFFFFF - 1000;
    CClientContextArray m_clients{nullptr, &TestClock};
};

}  // namespace

TEST_F(ClientContextTest, KeepsOneContextForEachExactId) {
    const std::wstring ids[] = {L"", L"a", L"A", L"a ", std::wstring(L"a\0b", 3), L"\x43A"};
    for (const std::wstring& id : ids) {
        CClientContext* context = m_clients.AcquireContext(id);
        EXPECT_EQ(context->Id(), id);
        EXPECT_EQ(m_clients.AcquireContext(id), context);
        m_clients.ReplaceStores(id, OneStore(id.c_str()));
    }
    EXPECT_EQ(m_clients.Count(), std::size(ids));
    for (const std::wstring& id : ids) {
        ASSERT_EQ(m_clients.CopyStores(id).size(), 1U);
        EXPECT_EQ(m_clients.CopyStores(id)[0].name, id.c_str());
    }
    EXPECT_TRUE(m_clients.CopyStores(L"nobody").empty());
    EXPECT_EQ(m_clients.Count(), std::size(ids));  // asking creates nothing
}

TEST_F(ClientContextTest, RemovesInAnyOrderAndGoesOn) {
    constexpr int kCount = 1000;
    const auto id = [](int i) { return L"client " + std::to_wstring(i); };
    for (int i = 0; i < kCount; ++i) {
        m_clients.ReplaceStores(id(i), OneStore(id(i).c_str()));
    }
    for (int i = 0; i < kCount; ++i) {
        if (i % 7 != 0) {
            m_clients.Remove(id(i));
            m_clients.Remove(id(i));  // an unknown id is no error
        }
    }
    m_clients.ReplaceStores(L"late", OneStore(L"late"));
    EXPECT_EQ(m_clients.Count(), 143U + 1);
    for (int i = 0; i < kCount; ++i) {
        const ca::StoreAddresses stores = m_clients.CopyStores(id(i));
        ASSERT_EQ(stores.size(), i % 7 == 0 ? 1U : 0U) << i;
        EXPECT_TRUE(stores.empty() || stores[0].name == id(i));
    }
    EXPECT_EQ(m_clients.CopyStores(L"late").size(), 1U);
    m_clients.CleanUp();
    EXPECT_EQ(m_clients.Count(), 0U);
    EXPECT_TRUE(m_clients.AcquireContext(L"late")->stores.empty());
}

TEST_F(ClientContextTest, SweepsWhatWasIdleForMoreThanThreeHours) {
    m_clients.AcquireContext(L"longer");
    now += 1;
    m_clients.AcquireContext(L"exactly");
    now = kStart + 1 + CClientContextArray::kMaxIdleMs;
    m_clients.AcquireContext(L"new");  // sweeps
    EXPECT_EQ(m_clients.Count(), 2U);
    EXPECT_EQ(m_clients.AcquireContext(L"exactly")->lastUse, now);
    EXPECT_EQ(m_clients.Count(), 2U);
}

TEST_F(ClientContextTest, SweepsAtMostOnceAnHour) {
    m_clients.AcquireContext(L"old");
    now = kStart + CClientContextArray::kSweepIntervalMs * 3;
    m_clients.AcquireContext(L"a");  // sweeps; "old" has been idle for exactly three hours
    EXPECT_EQ(m_clients.Count(), 2U);
    now += CClientContextArray::kSweepIntervalMs;
    m_clients.AcquireContext(L"a");  // exactly an hour later: no sweep
    EXPECT_EQ(m_clients.Count(), 2U);
    now += 1;
    m_clients.AcquireContext(L"a");
    EXPECT_EQ(m_clients.Count(), 1U);
}
