#pragma once

// What a survey notes while a file is read, since the document cannot tell it afterwards.

#include "resourceinfo/parser/context/GZFileReadStream.h"
#include "resourceinfo/parser/context/LineCounter.h"

#include <map>
#include <utility>
#include <vector>

namespace Context {

/// Notes where the elements of the top-level lists start, which members are duplicates, and how many static
/// entries each table has. PruningFilter reports each event of the values that the document keeps.
class SurveyNotes {
  public:
    /// What is noted of an element of a top-level list.
    struct Element {
        Place place = {}; ///< line 0 for an element that is neither an object nor an array
        std::uint64_t staticEntries = 0;
    };
    using Elements = std::vector<Element>;

    /// Takes notes of what is read from a stream, which must outlive the reading.
    void readsFrom( GZFileReadStream& stream );

    /// A member that the document keeps; the name is one of memberNames.
    void member( std::string_view name );
    void scalar() { valueStarts( false ); }
    void containerStarts( bool isArray );
    void containerEnds();
    /// Like containerEnds(), of a "static_entries" array, whose elements the document does not keep.
    void staticEntriesEnd( std::uint64_t count );

    /// Those of a top-level list, by its name.
    Elements const& elementsOf( std::string_view list ) const;
    std::vector<DuplicateMember> takeDuplicates() { return std::move( duplicates_ ); }

  private:
    /// An open object or array.
    struct Level {
        bool isArray = false;
        std::size_t elements = 0;     // so far
        std::string_view member = {}; // the last one
        std::uint64_t members = 0;    // so far, a bit each
    };

    void valueStarts( bool isContainer );
    Place placeOf( std::size_t offset );
    String pointer() const;
    /// Whether a value belongs to a member that came before: only the first one counts.
    bool isInDuplicate() const { return duplicateLevel_ > 0; }

    GZFileReadStream* stream_ = nullptr;
    LineCounter lines_;
    std::vector<Level> levels_;
    std::size_t duplicateLevel_ = 0; // number of levels around the duplicate that is being read; 0 for none
    std::map<std::string_view, Elements> lists_;
    std::vector<DuplicateMember> duplicates_;
};

} // namespace Context
