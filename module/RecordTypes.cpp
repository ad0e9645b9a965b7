#include "module/RecordTypes.h"

#include "common/ConfigFileParser.h"
#include "common/PKIConfigFileParser.h"
#include "records/AttrCertInfo.h"
#include "records/CertInfo.h"
#include "records/CrlInfo.h"
#include "records/SignInfo.h"
#include "records/StoreAddress.h"
#include "records/StringArray.h"
#include "records/VerificationResult.h"

#include <algorithm>
#include <iterator>

namespace ca {
namespace {

using RecordPtr = std::unique_ptr<ISerializable>;

template <class Record>
RecordPtr Make() {
    return std::make_unique<Record>();
}

template <int type>
RecordPtr MakeStringArray() {
    return std::make_unique<StringArray>(type);
}

struct RecordRow {
    int type;
    RecordPtr (*make)();
    bool isList;
};

// clang-format off
constexpr RecordRow kRecords[] = {
    {kTypeFileData,       &Make<FileData>,                      false},
    {kTypeStores,         &MakeStringArray<kTypeStores>,        true},
    {kTypeCertificates,   &MakeStringArray<kTypeCertificates>,  true},
    {kTypeSignInfo,       &Make<SignInfos>,                     true},
    {kTypeSignInfoArray,  &Make<SignInfosArray>,                true},
    {kTypeCertInfo,       &Make<CertInfo2>,                     false},
    {kTypeCertInfos,      &Make<CertInfos2>,                    true},
    {kTypeStoreAddress,   &Make<StoreAddress>,                  false},
    {kTypeStoreAddresses, &Make<StoreAddresses>,                true},
    {kTypeCrlInfo,        &Make<CrlInfo>,                       false},
    {kTypeConfig,         &Make<ConfigFileParser>,              false},
    {kTypePkiConfig,      &Make<PKIConfigFileParser>,           false},
    {kTypeVerifyResult,   &Make<VerificationResult>,            false},
    {kTypeCertForCheck,   &Make<CertForCheck>,                  false},
    {kTypeAttrCertInfo,   &Make<AttrCertInfo>,                  false},
};
// clang-format on

const RecordRow* FindRow(int type) noexcept {
    const auto* row = std::find_if(std::begin(kRecords), std::end(kRecords),
                                   [type](const RecordRow& each) { return each.type == type; });
    return row != std::end(kRecords) ? row : nullptr;
}

}  // namespace

RecordPtr MakeRecord(int type) {
    const RecordRow* row = FindRow(type);
    return row != nullptr ? row->make() : nullptr;
}

bool IsListRecord(int type) noexcept {
    const RecordRow* row = FindRow(type);
    return row != nullptr && row->isList;
}

FileData* FindFileData(SerializableContainer& objects) {
    return dynamic_cast<FileData*>(objects.GetObj(kTypeFileData));
}

}  // namespace ca
