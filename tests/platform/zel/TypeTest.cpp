#include "zel/Type.h"
#include "zel/Ptr.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

namespace {

using Zel::Ptr;
using Zel::PtrInterface;
using Zel::String;
using Zel::TypeId;
using Zel::TypeInfo;
using Zel::TypeKind;
using Zel::TypeModule;

class Named : public PtrInterface {
  public:
    explicit Named( String text ) : name( std::move( text ) ) {}
    TypeId fwkType() const override;

    String const name;
};

std::vector<TypeInfo> firstTypes() {
    return {
        { "Test::Color", TypeKind::enumeration, { "red", "green" }, nullptr, 0 },
        { "Test::Named",
          TypeKind::entity,
          {},
          []( std::span<String const> arguments ) -> Ptr<PtrInterface> {
              return new Named( arguments[ 0 ] );
          },
          1 },
        { "Test::Joined",
          TypeKind::entity,
          {},
          []( std::span<String const> arguments ) -> Ptr<PtrInterface> {
              return new Named( arguments[ 0 ] + arguments[ 1 ] );
          },
          2 },
        { "Test::Default",
          TypeKind::entity,
          {},
          []( std::span<String const> ) -> Ptr<PtrInterface> { return new Named( "default" ); },
          0 },
    };
}

TypeModule const& firstModule() {
    static TypeModule const& module = Zel::typeModuleIs( "TypeTestFirst", firstTypes() );
    return module;
}

TypeModule const& secondModule() {
    static TypeModule const& module =
        Zel::typeModuleIs( "TypeTestSecond", { { "Test::Mask", TypeKind::value, {}, nullptr, 0 } } );
    return module;
}

TypeId Named::fwkType() const { return firstModule().typeId( 1 ); }

String constructionError( TypeId type, std::vector<String> const& arguments ) {
    try {
        Zel::construct( type, arguments );
    } catch( std::invalid_argument const& error ) {
        return error.what();
    }
    return "";
}

TEST( TypeModule, ModulesStandInTheOrderOfRegistration ) {
    TypeModule const& first = firstModule();
    TypeModule const& second = secondModule();
    auto const modules = Zel::typeModules();
    auto const firstAt = std::find( modules.begin(), modules.end(), &first );
    auto const secondAt = std::find( modules.begin(), modules.end(), &second );
    ASSERT_NE( firstAt, modules.end() );
    ASSERT_NE( secondAt, modules.end() );
    EXPECT_LT( firstAt, secondAt );
}

TEST( TypeModule, KeepsItsTypesInTheirOrder ) {
    TypeModule const& module = firstModule();
    EXPECT_EQ( module.name(), "TypeTestFirst" );
    ASSERT_EQ( module.types().size(), 4U );
    EXPECT_EQ( module.types()[ 0 ].name, "Test::Color" );
    EXPECT_EQ( module.types()[ 0 ].kind, TypeKind::enumeration );
    EXPECT_EQ( module.types()[ 0 ].enumerators, ( std::vector<String>{ "red", "green" } ) );
    EXPECT_EQ( module.types()[ 2 ].name, "Test::Joined" );
    EXPECT_EQ( module.types()[ 2 ].kind, TypeKind::entity );
}

TEST( TypeModule, StaysInPlaceWhenOthersAreRegistered ) {
    TypeModule const* const before = &firstModule();
    auto const count = Zel::typeModules().size();
    std::vector<std::thread> threads;
    for( int i = 0; i < 4; ++i )
        threads.emplace_back( [] {
            for( int j = 0; j < 50; ++j )
                Zel::typeModuleIs( "TypeTestMany", {} );
        } );
    for( std::thread& thread : threads )
        thread.join();
    auto const modules = Zel::typeModules();
    EXPECT_EQ( modules.size(), count + 200 );
    EXPECT_NE( std::find( modules.begin(), modules.end(), before ), modules.end() );
    EXPECT_EQ( before->types().size(), 4U );
}

TEST( TypeId, NamesModuleAndIndex ) {
    TypeId const type = firstModule().typeId( 1 );
    EXPECT_TRUE( type );
    EXPECT_EQ( type.module, &firstModule() );
    EXPECT_EQ( type.index, 1U );
    EXPECT_EQ( Zel::typeInfo( type ).name, "Test::Named" );
    EXPECT_NE( type, firstModule().typeId( 2 ) );
    EXPECT_NE( firstModule().typeId( 0 ), secondModule().typeId( 0 ) );
    EXPECT_FALSE( TypeId() );
}

TEST( TypeId, AnEntityTellsItsOwn ) {
    Ptr<PtrInterface> const entity( new Named( "x" ) );
    EXPECT_EQ( entity->fwkType(), firstModule().typeId( 1 ) );
}

TEST( Construct, MakesAnEntityFromItsArguments ) {
    struct {
        Zel::U32 type;
        std::vector<String> arguments;
        char const* name;
    } const rows[] = {
        { 1, { "one" }, "one" },
        { 1, { "" }, "" },
        { 2, { "left", "right" }, "leftright" },
        { 3, {}, "default" },
    };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.name );
        auto const entity = Zel::construct( firstModule().typeId( row.type ), row.arguments );
        ASSERT_TRUE( entity );
        EXPECT_EQ( entity->references(), 1U );
        EXPECT_EQ( dynamic_cast<Named const&>( *entity ).name, row.name );
    }
}

TEST( Construct, SaysWhatItExpected ) {
    struct {
        TypeId type;
        std::vector<String> arguments;
        char const* error;
    } const rows[] = {
        { firstModule().typeId( 1 ), {}, "Test::Named takes 1 argument(s), got 0" },
        { firstModule().typeId( 1 ), { "a", "b" }, "Test::Named takes 1 argument(s), got 2" },
        { firstModule().typeId( 2 ), { "a" }, "Test::Joined takes 2 argument(s), got 1" },
        { firstModule().typeId( 3 ), { "a" }, "Test::Default takes 0 argument(s), got 1" },
        { firstModule().typeId( 0 ), {}, "Test::Color cannot be constructed from arguments" },
        { secondModule().typeId( 0 ), { "3" }, "Test::Mask cannot be constructed from arguments" },
    };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.error );
        EXPECT_EQ( constructionError( row.type, row.arguments ), row.error );
    }
}

} // namespace
