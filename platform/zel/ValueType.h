#pragma once

#include "vessa/Export.h"
#include "vessa/Types.h"

#include <exception>

namespace Zel {

using Vessa::String;
using Vessa::U32;

/// Raised by a request for the hash of a type that has none. what() reads "unhashable type: NAME".
class VESSA_EXPORT UnhashableType : public std::exception {
  public:
    explicit UnhashableType( String const& typeName );
    ~UnhashableType() override;
    UnhashableType( UnhashableType const& ) = default;
    UnhashableType& operator=( UnhashableType const& ) = default;

    char const* what() const noexcept override { return what_.c_str(); }

  private:
    String what_;
};

/// A message of the framework's serialisation; the value types of this process do not take part in it.
class PbMessage;

/// The text in single quotes; a backslash, a single quote and control characters are escaped (\\ \' \n \t
/// \x1b).
VESSA_EXPORT String quotedStrep( String const& text );

/// Reads an unsigned attribute from a value's string form: the form is either the bare decimal number or
/// "Value('TYPE', ** {'ATTRIBUTE': NUMBER, ...})". Throws std::invalid_argument, naming form and attribute,
/// when it holds no such number or one of more than 32 bits.
VESSA_EXPORT U32 strepAttribute( String const& strep, String const& attribute );

} // namespace Zel
