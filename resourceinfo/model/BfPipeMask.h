#pragma once

#include "resourceinfo/Export.h"
#include "resourceinfo/model/Types.h"
#include "zel/ValueType.h"

#include <ostream>

namespace BfResourceInfo {

/// The pipes that share one context file: bit i stands for pipe i. Ordered and hashed as its number.
class BFRESOURCEINFO_EXPORT BfPipeMask {
  public:
    BfPipeMask() = default;
    explicit BfPipeMask( U32 value ) : value_( value ) {}
    /// From a string form: its own ("3"), or one that holds the attribute "value". Anything else throws
    /// std::invalid_argument.
    explicit BfPipeMask( String const& strep );

    U32 value() const { return value_; }
    bool isEq( BfPipeMask const& other ) const { return value_ == other.value_; }
    /// The value itself.
    U32 hash() const { return value_; }

    /// Not supported, both fatal: "Only value types support witePbMessage" and "Only value types support
    /// constructFromPbMessage" are the messages.
    void writePbMessage( Zel::PbMessage& message ) const;
    static BfPipeMask constructFromPbMessage( Zel::PbMessage const& message );

    friend bool operator==( BfPipeMask const& a, BfPipeMask const& b ) { return a.isEq( b ); }
    friend bool operator<( BfPipeMask const& a, BfPipeMask const& b ) { return a.value_ < b.value_; }

  private:
    U32 value_ = 0;
};

/// The value in unsigned decimal.
BFRESOURCEINFO_EXPORT String valueToStrep( BfPipeMask const& mask );
BFRESOURCEINFO_EXPORT std::ostream& operator<<( std::ostream& os, BfPipeMask const& mask );

} // namespace BfResourceInfo
