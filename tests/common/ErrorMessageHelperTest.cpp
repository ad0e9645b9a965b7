#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Lng.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

class ErrorMessageHelperTest : public testing::Test {
  protected:
    ~ErrorMessageHelperTest() override { SetZORNALng(L"ru"); }
};

// What stands in front of the text of a code; some codes have no text after it, some nothing.
TEST_F(ErrorMessageHelperTest, PrefixesEachCodeByItsRule) {
    const struct {
        std::uint32_t code;
        const wchar_t *prefix, *english, *russian;
    } cases[] = {
        {0, L"DONE", L"", L""},
        {232, L"ERROR ", L"No data", L"Отсутствуют данные для обработки"},
        {16101, L"", L"File operation error", L"Ошибка операции с файлом"},
        {16102, L"", L"Certificate store error", L"Ошибка хранилища сертификатов"},
        {16104, L"NEED", L"", L""},
        {16123, L"DONE Invalid ", L"Certificate time is invalid",
         L"Срок действия сертификата истек или еще не начался"},
        {16199, L"DONE ", L"Signature was not verified", L"Цифровая подпись не проверялась"},
        {16200, L"DONE Valid ", L"No error found for this certificate or chain",
         L"Цепочка сертификатов действительна"},
        {16252, L"ERROR ", L"Wrong store address", L"Ошибочный адрес хранилища"},
        {16223, L"DONE Invalid ", L"A CTL used to create this chain is not valid for this usage",
         L"Список доверенных сертификатов, использовавшийся для создания данной цепочки не "
         L"разрешен к использованию"},
        {50, L"", L"", L""},
        {16224, L"", L"", L""},
        {0xFFFFFFFF, L"", L"", L""},
    };
    const ca::ErrorMessageHelper helper;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.code);
        for (const auto& [language, text] : {std::pair{L"en", c.english}, {L"ru", c.russian}}) {
            SetZORNALng(language);
            EXPECT_EQ(c.prefix + std::wstring(text),
                      helper.GetErrorMessage(c.code, /*prefix=*/true));
            EXPECT_EQ(text, helper.GetErrorMessageNoCustom(c.code, /*prefix=*/false));
            EXPECT_EQ(text,
                      ca::ErrorMessageHelper::GetErrorMessageCustom(c.code, {}, /*prefix=*/false));
        }
    }
    EXPECT_EQ(L"DONE Invalid", helper.GetErrorMessage(16109, /*prefix=*/true))
        << "without its own text";
}

TEST_F(ErrorMessageHelperTest, PutsTheModuleTableFirst) {
    SetZORNALng(L"en");
    EXPECT_EQ(L"ERROR Loading pkcs11 library failed.", GetErrorMessage(16400, /*prefix=*/false));
    EXPECT_EQ(L"", GetErrorMessage(ca::kErrPrivateKeyAccess, /*prefix=*/true));
    EXPECT_EQ(L"DONE", GetErrorMessage(ca::kErrNone, /*prefix=*/true));
    SetZORNALng(L"ru");
    EXPECT_EQ(L"ERROR Ошибка загрузки библиотеки pkcs11.", GetErrorMessage(16400, /*prefix=*/true));
}

TEST_F(ErrorMessageHelperTest, SelectsRussianByItsNameOnly) {
    for (const wchar_t* name : {L"ru", L"RU", L"Ru"}) {
        SetZORNALng(L"en");
        SetZORNALng(name);
        EXPECT_EQ(1049U, GetZORNALng());
    }
    for (const wchar_t* name : {L"en", L"ru-RU", L"", L"de"}) {
        SetZORNALng(L"ru");
        SetZORNALng(name);
        EXPECT_EQ(1033U, GetZORNALng());
    }
    EXPECT_THROW(SetZORNALng(nullptr), std::logic_error);
}

TEST_F(ErrorMessageHelperTest, NamesMessagesPastTheEnd) {
    EXPECT_STREQ(L"ZORNA_LANGUAGE_MESSAGE_ID_ERROR",
                 SetZORNAMessage(static_cast<ZornaMessage>(939)));
    for (int id = 0; id <= 938; ++id) {
        EXPECT_NE(nullptr, SetZORNAMessage(static_cast<ZornaMessage>(id)));
    }
}

struct Row {
    std::uint32_t number;
    const wchar_t *english, *russian;
};

// Conversions in a text, in order, as "%s%i".
std::wstring Conversions(const wchar_t* text) {
    std::wstring found;
    for (const wchar_t* at = text; (at = std::wcschr(at, L'%')) != nullptr; ++at) {
        found.append(at, 2);
    }
    return found;
}

TEST_F(ErrorMessageHelperTest, TablesHoldEachNumberOnceInBothLanguages) {
    const std::vector<Row> tables[] = {
        {
#define CA_ERROR(name, code, english, russian) {code, english, russian},
#include "common/ErrorTable.inc"
#undef CA_ERROR
        },
        {
#define CA_MODULE_ERROR(name, code, english, russian) {code, english, russian},
#include "common/ModuleErrorTable.inc"
#undef CA_MODULE_ERROR
        },
        {
#define CA_CHAIN_ERROR(name, code, english, russian) {code, english, russian},
#include "common/ChainErrorTable.inc"
#undef CA_CHAIN_ERROR
        },
        {
#define CA_MESSAGE(name, id, english, russian) {id, english, russian},
#include "common/MessageTable.inc"
#undef CA_MESSAGE
        },
        {
#define CA_SENTENCE(name, english, russian) {name, english, russian},
#include "common/SentenceTable.inc"
#undef CA_SENTENCE
        },
    };
    for (const std::vector<Row>& table : tables) {
        std::set<std::uint32_t> numbers;
        for (const Row& row : table) {
            EXPECT_TRUE(numbers.insert(row.number).second) << row.number;
            EXPECT_STRNE(L"", row.english) << row.number;
            EXPECT_STRNE(L"", row.russian) << row.number;
            EXPECT_EQ(Conversions(row.english), Conversions(row.russian)) << row.number;
        }
    }
}

}  // namespace
