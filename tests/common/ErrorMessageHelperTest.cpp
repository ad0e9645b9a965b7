#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Lng.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <set>
#include <stdexcept>

namespace {

class ErrorMessageHelperTest : public testing::Test {
  protected:
    ~ErrorMessageHelperTest() override { SetZORNALng(L"ru"); }
};

TEST_F(ErrorMessageHelperTest, PrefixesEachCodeByItsRule) {
    const struct {
        std::uint32_t code;
        const wchar_t *prefixed, *plain, *russianPrefixed, *russian;
    } cases[] = {
        {0, L"DONE", L"", L"DONE", L""},
        {232, L"ERROR No data", L"No data", L"ERROR Отсутствуют данные для обработки",
         L"Отсутствуют данные для обработки"},
        {16101, L"File operation error", L"File operation error", L"Ошибка операции с файлом",
         L"Ошибка операции с файлом"},
        {16102, L"Certificate store error", L"Certificate store error",
         L"Ошибка хранилища сертификатов", L"Ошибка хранилища сертификатов"},
        {16104, L"NEED", L"", L"NEED", L""},
        {16109, L"DONE Invalid", L"Signature is invalid", L"DONE Invalid", L"Подпись не верна"},
        {16123, L"DONE Invalid Certificate time is invalid", L"Certificate time is invalid",
         L"DONE Invalid Срок действия сертификата истек или еще не начался",
         L"Срок действия сертификата истек или еще не начался"},
        {16199, L"DONE Signature was not verified", L"Signature was not verified",
         L"DONE Цифровая подпись не проверялась", L"Цифровая подпись не проверялась"},
        {16200, L"DONE Valid No error found for this certificate or chain",
         L"No error found for this certificate or chain",
         L"DONE Valid Цепочка сертификатов действительна", L"Цепочка сертификатов действительна"},
        {16252, L"ERROR Wrong store address", L"Wrong store address",
         L"ERROR Ошибочный адрес хранилища", L"Ошибочный адрес хранилища"},
        {16400, L"ERROR It is not possible to create a signature with a certificate without trust",
         L"It is not possible to create a signature with a certificate without trust",
         L"ERROR Установлен запрет формирования ЭП, если сертификату нет доверия",
         L"Установлен запрет формирования ЭП, если сертификату нет доверия"},
        {16201,
         L"DONE Invalid This certificate or one of the certificates in the certificate chain is "
         L"not time valid",
         L"This certificate or one of the certificates in the certificate chain is not time valid",
         L"DONE Invalid Цепочка содержит просроченный или не вступивший в действие сертификат",
         L"Цепочка содержит просроченный или не вступивший в действие сертификат"},
        {16223, L"DONE Invalid A CTL used to create this chain is not valid for this usage",
         L"A CTL used to create this chain is not valid for this usage",
         L"DONE Invalid Список доверенных сертификатов, использовавшийся для создания данной "
         L"цепочки не разрешен к использованию",
         L"Список доверенных сертификатов, использовавшийся для создания данной цепочки не "
         L"разрешен к использованию"},
        {50, L"", L"", L"", L""},
        {16224, L"", L"", L"", L""},
        {0xFFFFFFFF, L"", L"", L"", L""},
    };
    const ca::ErrorMessageHelper helper;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.code);
        SetZORNALng(L"en");
        EXPECT_EQ(c.prefixed, helper.GetErrorMessage(c.code, true));
        EXPECT_EQ(c.plain, helper.GetErrorMessageNoCustom(c.code, false));
        SetZORNALng(L"ru");
        EXPECT_EQ(c.russianPrefixed, helper.GetErrorMessage(c.code, true));
        EXPECT_EQ(c.russian, ca::ErrorMessageHelper::GetErrorMessageCustom(c.code, {}, false));
    }
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
