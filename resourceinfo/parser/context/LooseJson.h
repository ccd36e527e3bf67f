#pragma once

#include "resourceinfo/parser/context/Json.h"

#include <span>

namespace Context {

/// A value of the document as a survey sees it: nothing is required of it, and what it does not have, or has
/// with another type, is absent. Cheap to copy; valid as long as the document.
class LooseJson {
  public:
    explicit LooseJson( JsonValue const* value ) : value_( value ) {}
    explicit LooseJson( JsonValue const& value ) : value_( &value ) {}

    bool exists() const { return value_ != nullptr; }
    bool isArray() const { return value_ && value_->IsArray(); }
    /// Whether it is the literal false.
    bool isFalse() const { return value_ && value_->IsFalse(); }

    /// The first member of a name, absent where the value is no object or has none.
    LooseJson operator[]( Json::Member member ) const {
        if( !value_ || !value_->IsObject() )
            return LooseJson( nullptr );
        auto const found = value_->FindMember( member.name );
        return LooseJson( found == value_->MemberEnd() ? nullptr : &found->value );
    }
    /// The elements, none where the value is no array.
    std::span<JsonValue const> elements() const {
        if( !value_ || !value_->IsArray() )
            return {};
        return { value_->Begin(), value_->Size() };
    }
    /// A string up to its first NUL, as the passes take it; empty for any other value.
    String text() const { return value_ && value_->IsString() ? value_->GetString() : ""; }
    std::optional<std::int64_t> wholeNumber() const {
        return value_ && value_->IsInt64() ? std::optional( value_->GetInt64() ) : std::nullopt;
    }
    std::optional<U32> unsignedNumber() const {
        return value_ && value_->IsUint() ? std::optional( value_->GetUint() ) : std::nullopt;
    }
    /// How a scalar is written, a string in quotes; empty for an object or array.
    String literal() const;

  private:
    JsonValue const* value_;
};

} // namespace Context
