#include "fuzz/JsonMutator.h"

#include "fuzz/Target.h"
#include "resourceinfo/parser/context/Json.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace {

using rapidjson::SizeType;
using rapidjson::Value;

/// Texts with more values than that are left to the bytewise way: the writer's stack is as deep as they are.
constexpr std::size_t mostValues = 3000;

/// A member of an object or an element of an array.
struct Site {
    Value* container;
    SizeType index;

    Value::MemberIterator member() const { return container->MemberBegin() + index; }
    Value& value() const { return container->IsObject() ? member()->value : ( *container )[ index ]; }
};

class Mutation {
    template<class Items>
    auto& pick( Items& items ) {
        return items[ below( std::size( items ) ) ];
    }

  public:
    Mutation( std::span<std::string_view const> names, unsigned seed ) : names_( names ), random_( seed ) {}

    bool parse( std::uint8_t const* data, std::size_t size ) {
        document_.Parse<rapidjson::kParseIterativeFlag>( reinterpret_cast<char const*>( data ), size );
        return !document_.HasParseError();
    }

    /// One change; false when there is nothing to change.
    bool step() {
        collect();
        if( sites_.empty() || containers_.size() + sites_.size() > mostValues )
            return false;
        Site const site = pick( sites_ );
        // What numbers do shows at few of their values, so they get more of the changes.
        bool const byBounds = site.value().IsNumber() && below( 2 ) == 0;
        ( this->*( byBounds ? &Mutation::number : pick( operations ) ) )( site );
        return true;
    }

    unsigned below( std::size_t bound ) { return static_cast<unsigned>( random_() % bound ); }

    rapidjson::Document const& document() const { return document_; }

  private:
    /// The places to change something at, and those to put something in.
    void collect() {
        sites_.clear();
        containers_.clear();
        noteContainer( document_ );
        for( std::size_t i = 0; i < containers_.size() && containers_.size() <= mostValues; ++i ) {
            Value& container = *containers_[ i ];
            SizeType const count = container.IsObject() ? container.MemberCount() : container.Size();
            for( SizeType index = 0; index < count; ++index )
                noteSite( { &container, index } );
        }
    }
    void noteContainer( Value& value ) {
        if( value.IsObject() || value.IsArray() )
            containers_.push_back( &value );
    }
    void noteSite( Site site ) {
        noteContainer( site.value() );
        if( site.container->IsArray() ||
            std::find( names_.begin(), names_.end(), site.member()->name.GetString() ) != names_.end() )
            sites_.push_back( site );
    }

    auto& allocator() { return document_.GetAllocator(); }
    Value copyOf( Value const& value ) { return { value, allocator() }; }
    Value textOf( std::string_view text ) {
        return { text.data(), static_cast<SizeType>( text.size() ), allocator() };
    }
    void add( Value& container, Value name, Value value ) {
        if( container.IsObject() )
            container.AddMember( name, value, allocator() );
        else
            container.PushBack( value, allocator() );
    }

    void leaveOut( Site site ) {
        if( site.container->IsObject() )
            site.container->EraseMember( site.member() );
        else
            site.container->Erase( site.container->Begin() + site.index );
    }

    void writeTwice( Site site ) {
        Value name = site.container->IsObject() ? copyOf( site.member()->name ) : Value();
        add( *site.container, std::move( name ), copyOf( site.value() ) );
    }

    void move( Site site ) {
        Value name = site.container->IsObject() ? copyOf( site.member()->name ) : textOf( pick( names_ ) );
        Value value = copyOf( site.value() );
        leaveOut( site );
        collect(); // what followed has moved up
        add( *pick( containers_ ), std::move( name ), std::move( value ) );
    }

    void rename( Site site ) {
        if( site.container->IsObject() ) {
            site.member()->name = textOf( pick( names_ ) );
            return;
        }
        Value& other = ( *site.container )[ below( site.container->Size() ) ];
        if( &other != &site.value() )
            site.value().Swap( other );
    }

    void retype( Site site ) {
        switch( below( 7 ) ) {
        case 0:
            site.value().SetNull();
            break;
        case 1:
            site.value().SetBool( below( 2 ) == 1 );
            break;
        case 2:
            site.value().SetInt( 0 );
            break;
        case 3:
            site.value().SetDouble( 0.5 );
            break;
        case 4:
            site.value() = textOf( pick( names_ ) );
            break;
        case 5:
            site.value().SetArray();
            break;
        default:
            site.value().SetObject();
        }
    }

    void empty( Site site ) {
        if( site.value().IsArray() )
            site.value().SetArray();
        else if( site.value().IsObject() )
            site.value().SetObject();
        else
            site.value() = textOf( "" );
    }

    void number( Site site ) {
        static constexpr std::array<double, 5> doubles{ 1.0, -0.5, 4294967295.5, 18446744073709551616.0,
                                                        1e300 };
        static constexpr std::array<std::int64_t, 12> integers{ 0,
                                                                -1,
                                                                255,
                                                                256,
                                                                65536,
                                                                2147483647,
                                                                2147483648,
                                                                4294967295,
                                                                4294967296,
                                                                -2147483648,
                                                                std::numeric_limits<std::int64_t>::min(),
                                                                std::numeric_limits<std::int64_t>::max() };
        unsigned const kind = below( 8 );
        if( kind == 0 )
            site.value().SetDouble( pick( doubles ) );
        else if( kind == 1 )
            site.value().SetUint64( std::numeric_limits<std::uint64_t>::max() - below( 2 ) );
        else if( kind == 2 && site.value().IsUint() )
            site.value().SetUint( site.value().GetUint() + 1 - below( 3 ) );
        else
            site.value().SetInt64( pick( integers ) );
    }

    void copyAnother( Site site ) {
        Value copy = copyOf( pick( sites_ ).value() ); // which may hold the site
        site.value() = copy;
    }

    void changeBytes( Site site ) {
        if( !site.value().IsString() )
            return number( site );
        std::string text( site.value().GetString(), site.value().GetStringLength() );
        std::size_t const size = text.size();
        text.resize( size + 16 );
        text.resize( LLVMFuzzerMutate( reinterpret_cast<std::uint8_t*>( text.data() ), size, text.size() ) );
        site.value() = textOf( text );
    }

    using Operation = void ( Mutation::* )( Site );
    static constexpr std::array<Operation, 9> operations{
        &Mutation::leaveOut, &Mutation::writeTwice,  &Mutation::move,
        &Mutation::rename,   &Mutation::retype,      &Mutation::empty,
        &Mutation::number,   &Mutation::copyAnother, &Mutation::changeBytes };

    std::span<std::string_view const> names_;
    std::minstd_rand random_;
    rapidjson::Document document_;
    std::vector<Site> sites_;
    std::vector<Value*> containers_;
};

} // namespace

std::size_t JsonMutator::change( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                 unsigned seed ) const {
    Mutation mutation( names_, seed );
    if( !mutation.parse( data, size ) || !mutation.step() )
        return 0;
    // Mostly one: reading ends at the first thing that is wrong.
    for( int more = 3; more > 0 && mutation.below( 4 ) == 0 && mutation.step(); --more )
        ;
    rapidjson::StringBuffer text;
    rapidjson::Writer writer( text );
    if( !mutation.document().Accept( writer ) || text.GetSize() > maxSize )
        return 0;
    std::memcpy( data, text.GetString(), text.GetSize() );
    return text.GetSize();
}

std::size_t JsonMutator::mutate( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                 unsigned seed ) const {
    bool const bytewise = seed % 8 == 0;
    std::size_t const changed = bytewise ? 0 : change( data, size, maxSize, seed );
    return changed > 0 ? changed : LLVMFuzzerMutate( data, size, maxSize );
}
