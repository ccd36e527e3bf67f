#pragma once

#include "fuzz/Takes.h"
#include "fuzz/Target.h"
#include "vessa/VectorException.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace BfResourceInfo {

/// A sequence of a parser, of records with `name`, `handle` and `size`, beside a plain one: each step is an
/// operation on both, whose answers must be equal, and so must what they hold after it, and what is first of
/// each key.
template<class Record, auto sequence, auto push, auto is, auto pop, auto popAll>
class SequenceModel {
  public:
    explicit SequenceModel( BfResourceParser& parser ) : parser_( parser ) {}

    void step( Choices& choices ) {
        U32 const operation = choices.below( 16 );
        if( operation < 8 )
            std::invoke( push, parser_, records_.emplace_back( record( choices ) ) );
        else if( operation < 12 )
            replace( choices.below( 24 ), record( choices ) );
        else if( operation < 15 )
            removeLast();
        else
            removeAll();
        check();
    }

  private:
    static Record record( Choices& choices ) {
        Record record;
        take( choices, record.name );
        take( choices, record.handle );
        take( choices, record.size );
        return record;
    }
    static bool same( Record const& a, Record const& b ) {
        return a.name == b.name && a.handle == b.handle && a.size == b.size;
    }

    void replace( U32 index, Record const& record ) {
        try {
            std::invoke( is, parser_, index, record );
            require( index < records_.size(), "replaced what is not there" );
            records_[ index ] = record;
        } catch( Vessa::VectorOutOfRange const& error ) {
            require( index >= records_.size(), "did not replace" );
            require( error.index() == index && error.size() == records_.size(), "out of another range" );
        }
    }
    void removeLast() {
        try {
            Record const last = std::invoke( pop, parser_ );
            require( !records_.empty() && same( last, records_.back() ), "popped another record" );
            records_.pop_back();
        } catch( Vessa::VectorEmpty const& ) {
            require( records_.empty(), "empty too early" );
        }
    }
    void removeAll() {
        records_.clear();
        std::invoke( popAll, parser_ );
    }

    void check() const {
        auto const& tested = std::invoke( sequence, parser_ );
        require( std::equal( tested.begin(), tested.end(), records_.begin(), records_.end(), same ),
                 "records" );
        for( Record const& record : records_ ) {
            checkFirst<BfByName<Record>>( BfByName<Record>::of( record ) );
            checkFirst<BfByHandle<Record>>( record.handle );
        }
        checkFirst<BfByName<Record>>( "name.7" );
        checkFirst<BfByHandle<Record>>( 3 );
    }
    template<class Key>
    void checkFirst( typename Key::Type const& key ) const {
        auto const hasKey = [ & ]( Record const& record ) { return Key::of( record ) == key; };
        auto const found = std::find_if( records_.begin(), records_.end(), hasKey );
        require( std::invoke( sequence, parser_ ).template first<Key>( key ) ==
                     static_cast<U32>( found - records_.begin() ),
                 "first of a key" );
    }

    BfResourceParser& parser_;
    std::vector<Record> records_;
};

} // namespace BfResourceInfo
