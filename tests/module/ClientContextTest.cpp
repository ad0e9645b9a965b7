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
        ASSERT_EQ(m_clients.CurrentStores(id)->size(), 1U);
        EXPECT_EQ(m_clients.CurrentStores(id)->front().name, id.c_str());
    }
    EXPECT_TRUE(m_clients.CurrentStores(L"nobody")->empty());
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
        const ca::StoreAddresses stores = *m_clients.CurrentStores(id(i));
        ASSERT_EQ(stores.size(), i % 7 == 0 ? 1U : 0U) << i;
        EXPECT_TRUE(stores.empty() || stores[0].name == id(i));
    }
    EXPECT_EQ(m_clients.CurrentStores(L"late")->size(), 1U);
    m_clients.CleanUp();
    EXPECT_EQ(m_clients.Count(), 0U);
    EXPECT_TRUE(m_clients.AcquireContext(L"late")->stores->empty());
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

TEST_F(ClientContextTest, SweepsAllThatIsOldAfterTheClockWasPutBack) {
    m_clients.AcquireContext(L"first");  // sweeps; the next ones do not
    m_clients.Remove(L"first");
    now += 1800000;
    m_clients.AcquireContext(L"before");
    now -= 600000;
    m_clients.AcquireContext(L"after");
    now += CClientContextArray::kMaxIdleMs + 1;
    m_clients.RemoveOld();
    EXPECT_EQ(m_clients.Count(), 1U) << "the one behind one that stays";
    now += 600000;
    m_clients.RemoveOld();
    EXPECT_EQ(m_clients.Count(), 0U);
}

// A thousand characters each, so that the size of the tables does not matter.
std::wstring LongId(int number) {
    return std::wstring(1000, static_cast<wchar_t>(L'a' + number));
}

TEST_F(ClientContextTest, GivesUpTheLongestIdleForMemory) {
    m_clients.AcquireContext(LongId(0));
    const std::size_t one = m_clients.Memory();
    EXPECT_NEAR(static_cast<double>(one), 4300, 200);
    m_clients.SetMaxMemory(4 * one);
    m_clients.ReplaceStores(LongId(1), OneStore(L"1"));
    {
        const auto use = m_clients.Use(LongId(0));  // longest idle no more, and in use
        for (int i = 2; i < 6; ++i) {
            m_clients.ReplaceStores(LongId(i), OneStore(L"x"));
            EXPECT_LE(m_clients.Memory(), 4 * one);
        }
        EXPECT_EQ(m_clients.Count(), 3U);
        EXPECT_TRUE(m_clients.CurrentStores(LongId(1))->empty());
        EXPECT_TRUE(m_clients.CurrentStores(LongId(3))->empty());
        EXPECT_EQ(m_clients.CurrentStores(LongId(4))->size(), 1U);

        // In use even what is too much alone stays.
        const auto huge = m_clients.Use(std::wstring(10000, L'h'));
        EXPECT_GT(m_clients.Memory(), 10 * one);
        EXPECT_EQ(m_clients.Count(), 2U);
    }
    EXPECT_EQ(m_clients.Count(), 1U);
    EXPECT_EQ(m_clients.Memory(), one);
}

TEST_F(ClientContextTest, RefusesAStateThatAloneIsTooMuch) {
    m_clients.SetMaxMemory(20000);
    ASSERT_TRUE(m_clients.ReplaceStores(L"a", OneStore(L"old")));
    ca::StoreAddresses many;
    many.resize(1000);
    EXPECT_FALSE(m_clients.ReplaceStores(L"a", many));
    EXPECT_FALSE(m_clients.ReplaceStores(L"b", OneStore(std::wstring(6000, L'n').c_str())));
    EXPECT_FALSE(m_clients.ReplaceStores(std::wstring(6000, L'i'), {}));
    EXPECT_EQ(m_clients.Count(), 1U);
    EXPECT_EQ(m_clients.CurrentStores(L"a")->front().name, L"old");
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
