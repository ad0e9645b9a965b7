// Which class the typed object of a block has.

#include "asn1/Asn1Collections.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Time.h"

#include <algorithm>
#include <memory>

namespace {

template <class T>
CAsn1Object* Create(CAsn1Block* block, CAsn1Object* parent) {
    return std::make_unique<T>(block, parent).release();  // the caller owns it
}

struct ClassRow {
    unsigned char tag;
    CAsn1Object* (*create)(CAsn1Block* block, CAsn1Object* parent);
};

template <class T>
constexpr ClassRow kRowOf = {T::kTag, Create<T>};

constexpr ClassRow kClasses[] = {
    kRowOf<CAsn1Boolean>,         kRowOf<CAsn1Integer>,       kRowOf<CAsn1BitString>,
    kRowOf<CAsn1OctetString>,     kRowOf<CAsn1Null>,          kRowOf<CAsn1ObjectIdentifier>,
    kRowOf<CAsn1UTF8String>,      kRowOf<CAsn1NumericString>, kRowOf<CAsn1PrintableString>,
    kRowOf<CAsn1TeletexString>,   kRowOf<CAsn1IA5String>,     kRowOf<CAsn1UTCTime>,
    kRowOf<CAsn1GeneralizedTime>, kRowOf<CAsn1UnicodeString>, kRowOf<CAsn1ContructedOctetString>,
    kRowOf<CAsn1Sequence>,        kRowOf<CAsn1Set>,
};

}  // namespace

CAsn1Object* CreatePrimitiveObject(CAsn1Block* block, CAsn1Object* parent) {
    const auto* row = std::ranges::find(kClasses, block->tag, &ClassRow::tag);
    return row != std::end(kClasses) ? row->create(block, parent)
                                     : Create<CAsn1Unknown>(block, parent);
}
