#pragma once

// The operations of an entity's collections, one macro a collection kind: each declares, for an attribute of
// the given name, the public operations and the private member. Reading operations are thread-safe (of
// ordered maps: in the atomic pointer mode) among themselves; the others need exclusion, as everything of an
// entity.

#include "vessa/Queue.h"
#include "zel/HashMap.h"
#include "zel/OrderedMap.h"
#include "zel/Sequence.h"

/// Sequence of records, of the given Zel::Sequence type. For a sequence `ports` of Port:
///   ports()               the sequence, for reading; lives as long as the entity
///   portsPush( port )     appends
///   portsIs( index, p )   replaces; Vessa::VectorOutOfRange, and nothing changed, for an index >= the size
///   portsPop()            removes the last and returns it; Vessa::VectorEmpty when there is none
///   portsPopAll()         removes all
#define ZEL_SEQUENCE( name, Sequence )                                                                       \
  public:                                                                                                    \
    Sequence const& name() const { return name##_; }                                                         \
    void name##Push( Sequence::value_type element ) { name##_.push( std::move( element ) ); }                \
    void name##Is( ::Zel::U32 index, Sequence::value_type element ) {                                        \
        name##_.is( index, std::move( element ) );                                                           \
    }                                                                                                        \
    Sequence::value_type name##Pop() { return name##_.pop(); }                                               \
    void name##PopAll() { name##_.popAll(); }                                                                \
                                                                                                             \
  private:                                                                                                   \
    Sequence name##_;

// What ordered and hash maps have in common. For a map `ports` from U32 to Port:
//   ports()             the map, for reading; lives as long as the entity
//   ports( key )        a copy of the key's value; Port() for a missing key
//   portsHas( key )     whether the key is there
//   portsIs( key, p )   inserts, or replaces the value of a present key in place
//   portsDel( key )     removes the entry and returns its value; a missing key changes nothing: Port()
//   portsDelAll()       removes all
#define ZEL_MAP_OPERATIONS( name, Map, Key, Value )                                                          \
    Map const& name() const { return name##_; }                                                              \
    Value name( Key const& key ) const { return name##_.value( key ); }                                      \
    bool name##Has( Key const& key ) const { return name##_.has( key ); }                                    \
    void name##Is( Key const& key, Value value ) { name##_.is( key, std::move( value ) ); }                  \
    Value name##Del( Key const& key ) { return name##_.del( key ); }                                         \
    void name##DelAll() { name##_.delAll(); }

/// Ordered map with entries of the type Entry (see Zel::OrderedMapEntry): the operations of all maps, and
///   portsDel( iterator )   removes the entry at an iterator, which stays valid, and returns its value
#define ZEL_ORDERED_MAP( name, Entry )                                                                       \
  public:                                                                                                    \
    using name##Map = ::Zel::OrderedMap<Entry>;                                                              \
    ZEL_MAP_OPERATIONS( name, name##Map, Entry::Key, Entry::Value )                                          \
    Entry::Value name##Del( name##Map::iterator const& position ) { return name##_.del( position ); }        \
                                                                                                             \
  private:                                                                                                   \
    name##Map name##_;

/// Hash map: the operations of all maps.
#define ZEL_HASH_MAP( name, Key, Value )                                                                     \
  public:                                                                                                    \
    using name##Map = ::Zel::HashMap<Key, Value>;                                                            \
    ZEL_MAP_OPERATIONS( name, name##Map, Key, Value )                                                        \
                                                                                                             \
  private:                                                                                                   \
    name##Map name##_;

/// The same for a map of the given type, which has the operations of Zel::HashMap<Key, Value>.
#define ZEL_HASH_MAP_OF_TYPE( name, Map, Key, Value )                                                        \
  public:                                                                                                    \
    ZEL_MAP_OPERATIONS( name, Map, Key, Value )                                                              \
                                                                                                             \
  private:                                                                                                   \
    Map name##_;

/// Hash set. For a set `names` of String: names(), namesHas( name ), namesIs( name ) (a present name changes
/// nothing), namesDel( name ) (returns the name; a missing one changes nothing: String()), namesDelAll().
#define ZEL_HASH_SET( name, Key )                                                                            \
  public:                                                                                                    \
    using name##Set = ::Zel::HashSet<Key>;                                                                   \
    name##Set const& name() const { return name##_; }                                                        \
    bool name##Has( Key const& key ) const { return name##_.has( key ); }                                    \
    void name##Is( Key const& key ) { name##_.is( key ); }                                                   \
    Key name##Del( Key const& key ) { return name##_.del( key ); }                                           \
    void name##DelAll() { name##_.delAll(); }                                                                \
                                                                                                             \
  private:                                                                                                   \
    name##Set name##_;

/// Queue inside a value type, of unsigned 32-bit numbers. For a queue `refs`:
///   refs()                    the queue, for reading
///   refsEnq( n )              appends at the back
///   refsDeq()                 removes and returns the front
///   refsFront(), refsBack()   the element at that end; these two and refsDeq(): 0, and nothing changed, when
///                             the queue is empty
///   refsDelAll()              removes all
#define ZEL_QUEUE( name )                                                                                    \
  public:                                                                                                    \
    ::Vessa::Queue<::Vessa::U32> const& name() const { return name##_; }                                     \
    void name##Enq( ::Vessa::U32 value ) { name##_.enq( value ); }                                           \
    ::Vessa::U32 name##Deq() { return name##_.deq(); }                                                       \
    ::Vessa::U32 name##Front() const { return name##_.front(); }                                             \
    ::Vessa::U32 name##Back() const { return name##_.back(); }                                               \
    void name##DelAll() { name##_.clear(); }                                                                 \
                                                                                                             \
  private:                                                                                                   \
    ::Vessa::Queue<::Vessa::U32> name##_;
