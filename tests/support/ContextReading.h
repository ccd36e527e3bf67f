#pragma once

// The results of the reader of context files for a text, and of RapidJSON's own reader. Built like
// the library, optimised where that is, so that tests can read many texts.

#include "resourceinfo/parser/context/InputFile.h"
#include "resourceinfo/parser/context/Json.h" // before all of RapidJSON
#include "tests/support/TextFile.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include <rapidjson/error/error.h>

namespace Support {

/// The result for a text: a document as compact JSON, or an error with its place.
struct Reading {
    rapidjson::ParseErrorCode error = rapidjson::kParseErrorNone;
    std::size_t offset = 0;
    std::string document;

    bool operator==( Reading const& ) const = default;
    friend std::ostream& operator<<( std::ostream& os, Reading const& reading );
};

/// What is taken for a survey while a file is read; it makes no difference to what is read.
enum class Surveying { nothing, notes, digests };

/// Reads an open file as context files are read, in a buffer of that many characters.
Reading contextReading( Context::InputFile& file, std::size_t bufferSize,
                        Surveying surveying = Surveying::nothing );

/// Reads a text, to its first NUL, as RapidJSON does, without the members that no pass asks for.
Reading plainReading( std::string const& text );

/// How the reading of a text ended that is one dropped value.
struct DroppedReading {
    rapidjson::ParseErrorCode error = rapidjson::kParseErrorNone;
    std::size_t offset = 0;
    std::size_t taken = 0; // characters
    unsigned level = 0;    // of nesting

    bool operator==( DroppedReading const& ) const = default;
    friend std::ostream& operator<<( std::ostream& os, DroppedReading const& reading );
};

/// On the way of its own that the reader has for such values, in a buffer of that many characters.
DroppedReading droppedReading( std::string_view text, std::size_t bufferSize );

/// On the reader's way for all other values.
DroppedReading ordinaryReading( std::string_view text, std::size_t bufferSize );

} // namespace Support
