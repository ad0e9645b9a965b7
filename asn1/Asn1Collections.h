#pragma once

#include "asn1/CryptAsn1Base.h"

/// SEQUENCE and SET of no particular type: the members are made from the children.
class CAsn1Collection : public CAsn1Object {
  public:
    /// Logs error 0x8009310B for a block without the constructed bit.
    explicit CAsn1Collection(CAsn1Block* block, CAsn1Object* parent = nullptr);

    /// Makes and decodes the members, those of inner SEQUENCEs and SETs too, without recursion.
    /// Throws what a member's Decode() throws; the members made by then stay.
    void Decode() override;
    /// The members are written by themselves.
    void _Encode() override {}

  protected:
    using CAsn1Object::CAsn1Object;
};

class CAsn1Sequence : public CAsn1Collection {
  public:
    static constexpr unsigned char kTag = 0x30;

    explicit CAsn1Sequence(CAsn1Block* block, CAsn1Object* parent = nullptr)
        : CAsn1Collection(block, parent) {}
    CAsn1Sequence() : CAsn1Collection(kTag) {}
};

class CAsn1Set : public CAsn1Collection {
  public:
    static constexpr unsigned char kTag = 0x31;

    explicit CAsn1Set(CAsn1Block* block, CAsn1Object* parent = nullptr)
        : CAsn1Collection(block, parent) {}
    CAsn1Set() : CAsn1Collection(kTag) {}
};
