#pragma once

#include "resourceinfo/Export.h"
#include "resourceinfo/model/Types.h"

#include <ostream>

/// A flexible header: its size in bytes, 16 bits wide. In the model the sum of its fields' "bit_width" modulo
/// 65536, divided by 8.
class BFRESOURCEINFO_EXPORT BfHeaderInfo {
  public:
    BfHeaderInfo() = default;
    explicit BfHeaderInfo( U16 size ) : size_( size ) {}
    /// From a string form: its own ("40"), or one that holds the attribute "size"; stored modulo 65536.
    /// Anything else throws std::invalid_argument.
    explicit BfHeaderInfo( String const& strep );

    U16 size() const { return size_; }
    bool isEq( BfHeaderInfo const& other ) const { return size_ == other.size_; }
    /// Throws Zel::UnhashableType: headers are values, never keys.
    [[noreturn]] U32 hash() const;

    friend bool operator==( BfHeaderInfo const& a, BfHeaderInfo const& b ) { return a.isEq( b ); }

  private:
    U16 size_ = 0;
};

/// The size in unsigned decimal.
BFRESOURCEINFO_EXPORT String valueToStrep( BfHeaderInfo const& header );
BFRESOURCEINFO_EXPORT std::ostream& operator<<( std::ostream& os, BfHeaderInfo const& header );
