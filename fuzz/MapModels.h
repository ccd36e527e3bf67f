#pragma once

// Maps beside plain ones: each step is an operation on both, whose answers must be equal, and so must all
// that they hold after it.

#include "fuzz/Takes.h"
#include "fuzz/Target.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>

namespace BfResourceInfo {

/// The value of a key of a plain map, as our maps answer it: one as made for a key that is not there.
template<class Key, class Value>
Value valueOf( std::map<Key, Value> const& model, Key const& key ) {
    auto const found = model.find( key );
    return found != model.end() ? found->second : Value();
}
/// The same, and removes the key.
template<class Key, class Value>
Value removedFrom( std::map<Key, Value>& model, Key const& key ) {
    auto node = model.extract( key );
    return node ? std::move( node.mapped() ) : Value();
}

/// An ordered map, with an iterator that walks while the map changes.
template<class Map, class Entry = typename Map::iterator::value_type>
class OrderedMapModel {
    using Key = typename Entry::Key;
    using Value = typename Entry::Value;

  public:
    void step( Choices& choices ) {
        U32 const operation = choices.below( 16 );
        if( operation < 6 )
            insertOrReplace( take<Key>( choices ), take<Value>( choices ) );
        else if( operation < 9 )
            remove( take<Key>( choices ) );
        else if( operation < 11 )
            removeAtIterator();
        else if( operation < 14 )
            advance();
        else if( operation == 14 )
            place( take<Key>( choices ) );
        else
            removeAll();
        check();
    }

  private:
    void insertOrReplace( Key const& key, Value const& value ) {
        changes_ += !model_.contains( key );
        model_[ key ] = value;
        tested_.is( key, value );
    }
    Value removeFromModel( Key const& key ) {
        changes_ += model_.contains( key );
        if( standing_ && at_ == key )
            present_ = false; // for good: the same key again is another entry
        return removedFrom( model_, key );
    }
    void remove( Key const& key ) {
        require( tested_.del( key ) == removeFromModel( key ), "removed another value" );
    }
    void removeAtIterator() {
        Value const value = tested_.del( walker_ );
        require( value == ( present_ ? removeFromModel( at_ ) : Value() ), "removed another entry" );
    }
    void removeAll() {
        changes_ += static_cast<U32>( model_.size() );
        model_.clear();
        present_ = false;
        tested_.delAll();
    }
    void advance() {
        auto const next = standing_ ? model_.upper_bound( at_ ) : model_.begin();
        if( standing_ )
            walker_++;
        else
            walker_ = tested_.begin();
        standAt( next );
    }
    void place( Key const& key ) {
        walker_ = tested_.find( key );
        standAt( model_.find( key ) );
    }
    void standAt( typename std::map<Key, Value>::const_iterator position ) {
        standing_ = present_ = position != model_.end();
        if( standing_ )
            at_ = position->first;
    }

    void check() const {
        auto const same = []( Entry const& entry, auto const& pair ) {
            return entry.key() == pair.first && entry.value() == pair.second;
        };
        require( std::equal( tested_.begin(), tested_.end(), model_.begin(), model_.end(), same ),
                 "entries" );
        require( tested_.size() == model_.size() && tested_.changes() == changes_, "size or changes" );
        require( ( walker_ != tested_.end() ) == standing_, "whether the iterator stands" );
        require( !standing_ || walker_->key() == at_, "where the iterator stands" );
        for( auto const& [ key, value ] : model_ )
            require( tested_.has( key ) && tested_.value( key ) == value, "value of a key" );
    }

    Map tested_;
    std::map<Key, Value> model_;
    U32 changes_ = 1;
    typename Map::iterator walker_ = tested_.end();
    bool standing_ = false; // whether the iterator stands on an entry, of the key at_
    bool present_ = false;  // whether that entry is still in the map
    Key at_{};
};

/// A hash map of a parser, by its operations.
template<class Value, auto map, auto is, auto del, auto delAll>
class HashMapModel {
  public:
    explicit HashMapModel( BfResourceParser& parser ) : parser_( parser ) {}

    void step( Choices& choices ) {
        U32 const operation = choices.below( 16 );
        String const key = take<String>( choices );
        change(
            operation, [ & ] { std::invoke( is, parser_, key, model_[ key ] = take<Value>( choices ) ); },
            [ & ] {
                require( std::invoke( del, parser_, key ) == removedFrom( model_, key ),
                         "removed another value" );
            },
            [ & ] {
                model_.clear();
                std::invoke( delAll, parser_ );
            } );
        check( key );
    }

  private:
    void check( String const& key ) const {
        auto const& tested = std::invoke( map, parser_ );
        std::map<String, Value> const held( tested.begin(), tested.end() );
        auto const same = []( auto const& a, auto const& b ) {
            return a.first == b.first && a.second == b.second;
        };
        require( tested.size() == model_.size(), "size" );
        require( std::equal( held.begin(), held.end(), model_.begin(), model_.end(), same ), "entries" );
        require( tested.has( key ) == model_.contains( key ), "whether a key is there" );
        require( tested.value( key ) == valueOf( model_, key ), "value of a key" );
    }

    BfResourceParser& parser_;
    std::map<String, Value> model_;
};

} // namespace BfResourceInfo
