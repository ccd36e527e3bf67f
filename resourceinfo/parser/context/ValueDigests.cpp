#include "resourceinfo/parser/context/ValueDigests.h"

#include <algorithm>
#include <span>
#include <utility>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Context {

namespace {

/// What a value is goes into its digest as the seed.
enum class Type : std::uint64_t {
    null = 1,
    no,
    yes,
    integer,
    negativeInteger,
    real,
    string,
    array,
    object,
    name
};

Digest digestOf( Type type, void const* data, std::size_t size ) {
    XXH128_hash_t const hash = XXH3_128bits_withSeed( data, size, static_cast<XXH64_hash_t>( type ) );
    return { hash.low64, hash.high64 };
}

Digest digestOf( Type type ) { return digestOf( type, "", 0 ); }

Digest digestOf( Type type, std::string_view text ) { return digestOf( type, text.data(), text.size() ); }

constexpr std::string_view surveyedLists[] = { "tables", "learn_quanta", "flexible_headers",
                                               "dynamic_hash_calculations" };

bool isSurveyed( std::string_view list ) {
    return std::find( std::begin( surveyedLists ), std::end( surveyedLists ), list ) !=
           std::end( surveyedLists );
}

/// Sorts members by name; those of one name stay in their order. Most objects have few, for which no sort of
/// the standard library is made.
template<class Part>
void sortByName( std::span<Part> parts ) {
    auto const isBefore = []( Part const& a, Part const& b ) {
        return a.name.low != b.name.low ? a.name.low < b.name.low : a.name.high < b.name.high;
    };
    constexpr std::size_t few = 32;
    if( parts.size() > few )
        return std::stable_sort( parts.begin(), parts.end(), isBefore );
    for( auto next = parts.begin(); next != parts.end(); ++next ) {
        Part const part = *next;
        auto place = next;
        for( ; place != parts.begin() && isBefore( part, place[ -1 ] ); --place )
            *place = place[ -1 ];
        *place = part;
    }
}

} // namespace

/// Takes the parts of a container from the end of a list.
Digest ValueDigests::digestOfParts( std::vector<Part>& all, std::size_t first, bool isArray ) {
    std::span const parts( all.begin() + static_cast<std::ptrdiff_t>( first ), all.end() );
    if( !isArray )
        sortByName( parts );
    Digest const digest = digestOf( isArray ? Type::array : Type::object, parts.data(), parts.size_bytes() );
    all.resize( first );
    return digest;
}

void ValueDigests::null( bool isDropped ) { scalarEnds( digestOf( Type::null ), isDropped ); }

void ValueDigests::boolean( bool value, bool isDropped ) {
    scalarEnds( digestOf( value ? Type::yes : Type::no ), isDropped );
}

void ValueDigests::integer( std::uint64_t value, bool isDropped ) {
    scalarEnds( digestOf( Type::integer, &value, sizeof value ), isDropped );
}

void ValueDigests::negativeInteger( std::int64_t value, bool isDropped ) {
    scalarEnds( digestOf( Type::negativeInteger, &value, sizeof value ), isDropped );
}

void ValueDigests::real( double value, bool isDropped ) {
    double const number = value == 0 ? 0 : value; // -0.0 equals 0.0
    scalarEnds( digestOf( Type::real, &number, sizeof number ), isDropped );
}

void ValueDigests::string( std::string_view text, bool isDropped ) {
    scalarEnds( digestOf( Type::string, text ), isDropped );
}

void ValueDigests::key( std::string_view name ) {
    levels_.back().name = digestOf( Type::name, name );
    if( keeps_ )
        ( levels_.size() == 1 ? list_ : levels_.size() == 3 ? member_ : part_ ) = name;
}

bool ValueDigests::keepsValues() const {
    switch( levels_.size() ) {
    case 1:
        return !levels_[ 0 ].isArray;
    case 2:
        return elements_ != nullptr;
    case 3:
        return elements_ && !levels_[ 2 ].isArray;
    default:
        return levels_.size() == 4 && hasParts_;
    }
}

void ValueDigests::containerStarts( bool isArray, bool isDropped ) {
    levels_.push_back( { isArray, isDropped, parts_.size(), unreadParts_.size() } );
    if( levels_.size() == 2 && isArray && isSurveyed( list_ ) && lists_.find( list_ ) == lists_.end() )
        elements_ = &lists_[ list_ ];
    else if( levels_.size() == 4 && elements_ && !levels_[ 2 ].isArray )
        hasParts_ = isArray ? member_ == "actions" : member_ == "match_attributes";
    keeps_ = keepsValues();
}

void ValueDigests::containerEnds() {
    Level const level = levels_.back();
    Digest const digest = digestOfParts( parts_, level.firstPart, level.isArray );
    Digest const unread = level.isDropped ? digest
                          : unreadParts_.size() == level.firstUnread
                              ? Digest()
                              : digestOfParts( unreadParts_, level.firstUnread, level.isArray );
    if( levels_.size() == 2 )
        elements_ = nullptr;
    else if( levels_.size() == 4 )
        hasParts_ = false;
    levels_.pop_back();
    keeps_ = keepsValues();
    valueEnds( digest, unread );
}

void ValueDigests::valueEnds( Digest const& digest, Digest const& unread ) {
    if( keeps_ )
        keep( digest, unread );
    if( levels_.empty() ) {
        file_ = digest;
        return;
    }
    Level const& around = levels_.back();
    parts_.push_back( { around.name, digest } );
    if( !around.isDropped && unread != Digest() )
        unreadParts_.push_back( { around.name, unread } );
}

void ValueDigests::keep( Digest const& digest, Digest const& unread ) {
    if( levels_.size() == 1 )
        members_.push_back( { list_, digest, unread } );
    else if( levels_.size() == 2 )
        elements_->push_back( { digest, std::exchange( elementParts_, {} ) } );
    else if( levels_.size() == 3 )
        elementParts_.push_back( { member_, digest, unread } );
    else
        elementParts_.push_back(
            { member_ + '/' +
                  ( levels_[ 3 ].isArray ? std::to_string( parts_.size() - levels_[ 3 ].firstPart ) : part_ ),
              digest, unread } );
}

std::vector<ElementDigests> ValueDigests::takeElements( std::string_view list ) {
    auto const found = lists_.find( list );
    return found == lists_.end() ? std::vector<ElementDigests>() : std::move( found->second );
}

} // namespace Context
