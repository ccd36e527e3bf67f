#pragma once

// Digests of the values of a file, taken from the reader's events before anything is dropped.

#include "resourceinfo/parser/context/Survey.h"

#include <map>
#include <string_view>
#include <vector>

namespace Context {

/// The digests of an element of a top-level list, and of its parts.
struct ElementDigests {
    Digest digest;
    std::vector<PartDigest> parts;
};

/// Takes the digest of every value, and keeps those of the file, its members, the elements of the surveyed
/// lists and the parts of these. Values are reported as RapidJSON's reader types them, in the order of the
/// file, each with whether it is dropped: whether it is in a value that no pass reads.
class ValueDigests {
  public:
    void null( bool isDropped );
    void boolean( bool value, bool isDropped );
    void integer( std::uint64_t value, bool isDropped );
    void negativeInteger( std::int64_t value, bool isDropped );
    void real( double value, bool isDropped );
    void string( std::string_view text, bool isDropped );
    void key( std::string_view name );
    void containerStarts( bool isArray, bool isDropped );
    void containerEnds();

    // What was found, once the value of the whole file has been reported.
    Digest file() const { return file_; }
    std::vector<PartDigest> takeMembers() { return std::move( members_ ); }
    /// Of the first top-level member of a name, which is a surveyed list; empty when there is none.
    std::vector<ElementDigests> takeElements( std::string_view list );

  private:
    /// A member, or an element, which has no name.
    struct Part {
        Digest name;
        Digest value;
    };
    /// An open object or array.
    struct Level {
        bool isArray;
        bool isDropped;
        std::size_t firstPart;   // in parts_
        std::size_t firstUnread; // in unreadParts_
        Digest name = {};        // of the last member
    };

    /// With the digest of what is dropped of it; zero for nothing.
    void valueEnds( Digest const& digest, Digest const& unread );
    void scalarEnds( Digest const& digest, bool isDropped ) {
        valueEnds( digest, isDropped ? digest : Digest() );
    }
    static Digest digestOfParts( std::vector<Part>& all, std::size_t first, bool isArray );
    /// Whether digests of the values in the innermost open container are kept.
    bool keepsValues() const;
    void keep( Digest const& digest, Digest const& unread );

    std::vector<Level> levels_;
    std::vector<Part> parts_;       // of all open containers, the innermost last
    std::vector<Part> unreadParts_; // the same of what is dropped, of containers that are not

    // Where in the file, as far as it matters: "/tables/3/match_attributes/key_fields" is list, element,
    // member, part.
    String list_;
    String member_;
    String part_;
    std::vector<ElementDigests>* elements_ = nullptr; // of the surveyed list that is being read
    bool hasParts_ = false;                           // the member that is being read is kept part by part
    bool keeps_ = false;                              // keepsValues(), asked for each value

    Digest file_;
    std::vector<PartDigest> members_;
    std::vector<PartDigest> elementParts_; // of the element that is being read
    std::map<String, std::vector<ElementDigests>, std::less<>> lists_;
};

} // namespace Context
