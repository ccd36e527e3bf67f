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

void ValueDigests::null() { valueEnds( digestOf( Type::null ) ); }

void ValueDigests::boolean( bool value ) { valueEnds( digestOf( value ? Type::yes : Type::no ) ); }

void ValueDigests::integer( std::uint64_t value ) {
    valueEnds( digestOf( Type::integer, &value, sizeof value ) );
}

void ValueDigests::negativeInteger( std::int64_t value ) {
    valueEnds( digestOf( Type::negativeInteger, &value, sizeof value ) );
}

void ValueDigests::real( double value ) {
    double const number = value == 0 ? 0 : value; // -0.0 equals 0.0
    valueEnds( digestOf( Type::real, &number, sizeof number ) );
}

void ValueDigests::string( std::string_view text ) { valueEnds( digestOf( Type::string, text ) ); }

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

void ValueDigests::containerStarts( bool isArray ) {
    levels_.push_back( { isArray, parts_.size() } );
    if( levels_.size() == 2 && isArray && isSurveyed( list_ ) && lists_.find( list_ ) == lists_.end() )
        elements_ = &lists_[ list_ ];
    else if( levels_.size() == 4 && elements_ && !levels_[ 2 ].isArray )
        hasParts_ = isArray ? member_ == "actions" : member_ == "match_attributes";
    keeps_ = keepsValues();
}

void ValueDigests::containerEnds() {
    auto const [ isArray, firstPart, name ] = levels_.back();
    std::span const parts( parts_.begin() + static_cast<std::ptrdiff_t>( firstPart ), parts_.end() );
    if( !isArray )
        sortByName( parts );
    Digest const digest = digestOf( isArray ? Type::array : Type::object, parts.data(), parts.size_bytes() );
    parts_.resize( firstPart );
    if( levels_.size() == 2 )
        elements_ = nullptr;
    else if( levels_.size() == 4 )
        hasParts_ = false;
    levels_.pop_back();
    keeps_ = keepsValues();
    valueEnds( digest );
}

void ValueDigests::valueEnds( Digest const& digest ) {
    if( keeps_ )
        keep( digest );
    if( levels_.empty() )
        file_ = digest;
    else
        parts_.push_back( { levels_.back().name, digest } );
}

void ValueDigests::keep( Digest const& digest ) {
    if( levels_.size() == 1 )
        members_.push_back( { list_, digest } );
    else if( levels_.size() == 2 )
        elements_->push_back( { digest, std::exchange( elementParts_, {} ) } );
    else if( levels_.size() == 3 )
        elementParts_.push_back( { member_, digest } );
    else
        elementParts_.push_back(
            { member_ + '/' +
                  ( levels_[ 3 ].isArray ? std::to_string( parts_.size() - levels_[ 3 ].firstPart ) : part_ ),
              digest } );
}

std::vector<ElementDigests> ValueDigests::takeElements( std::string_view list ) {
    auto const found = lists_.find( list );
    return found == lists_.end() ? std::vector<ElementDigests>() : std::move( found->second );
}

} // namespace Context
