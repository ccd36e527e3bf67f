#include "cli/terminal/Characters.h"
#include "tests/cli/Inputs.h"

#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "inspect/model/RecordKinds.h"

#include <gmock/gmock.h>

namespace {

using Bfri::ExitStatus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class FieldOfARecord : public InFolder {
  protected:
    FieldOfARecord() {
        auto& parser = model->parser();
        BfTableInfo acl = named<BfTableInfo>( "pipe.Ingress.acl", 0x1000001 );
        acl.size = 512;
        acl.hitBitSupported = true;
        parser.bfTablesPush( acl );
        parser.bfTablesPush( named<BfTableInfo>( "pipe.Egress.acl", 2 ) );
        parser.bfTablesPush( named<BfTableInfo>( "acl", 3 ) );
        parser.bfTablesPush( named<BfTableInfo>( "pipe.lpm", 4 ) );
        BfResource placed = named<BfResource>( "pipe.lpm", 4 );
        placed.type = static_cast<U32>( BfResourceType::hashMatch );
        parser.bfResourcesPush( placed );
        parser.bfCountersPush( named<BfTableCounterInfo>( "shared", 5 ) );
        parser.multipleParentTablesIs( "shared" );
        parser.bfRegisterInfosPush( { .name = "cells\n", .dataType = "\x1B[2J", .width = 8 } );
        parser.bfDynamicHashInfoIs( "hash", { 1, 2, 2, { "hdr.a", "hdr.b" } } );
        parser.ingressPhvContainersIs( "hdr.a", 4 );
    }

    String answer( String const& kind, String const& name, String const& field ) {
        std::ostringstream out;
        std::ostringstream err;
        Bfri::Request const request{ nullptr, { "switch.conf", kind, name, field } };
        Bfri::printValues( { Bfri::fieldRows( *model, request ) }, request, { out, err } );
        notes = err.str();
        return out.str();
    }
    /// What an answer fails with: its status, and its text in `notes`.
    ExitStatus statusOf( String const& kind, String const& name, String const& field ) {
        try {
            answer( kind, name, field );
        } catch( Bfri::Failure const& failure ) {
            notes = failure.what();
            suggestions = failure.suggestions;
            return failure.status;
        }
        return ExitStatus::done;
    }

    ConfigurationPtr const model = emptyModel();
    String notes;
    std::vector<String> suggestions;
};

TEST_F( FieldOfARecord, IsBare ) {
    EXPECT_EQ( answer( "table", "pipe.Ingress.acl", "size" ), "512\n" );
    EXPECT_EQ( answer( "table", "pipe.Ingress.acl", "handle" ), "16777217\n" );
    EXPECT_EQ( answer( "table", "pipe.Ingress.acl", "hitBitSupported" ), "true\n" );
    EXPECT_EQ( answer( "table", "pipe.Ingress.acl", "hasActionProfile" ), "false\n" );
    EXPECT_EQ( answer( "table", "pipe.Ingress.acl", "hitBitSmashOffset" ), "0\n" );
    EXPECT_EQ( answer( "table", "pipe.Ingress.acl", "maxPrios" ), "0\n" );
    EXPECT_EQ( answer( "resource", "pipe.lpm", "type" ), "2\n" );
    EXPECT_EQ( answer( "resource", "pipe.lpm", "typeName" ), "hash_match\n" );
    EXPECT_EQ( answer( "resource", "pipe.lpm", "ingress" ), "false\n" );
    EXPECT_EQ( answer( "phv", "hdr.a", "ingressBytes" ), "4\n" );
    EXPECT_EQ( notes, "" );
}

TEST_F( FieldOfARecord, ThatIsAListTakesALineAnElement ) {
    EXPECT_EQ( answer( "hash", "hash", "fieldNames" ), "hdr.a\nhdr.b\n" );
    model->parser().resourceHandlesIs( 9, [] {
        BfResourceInfo::BfZelResource resource;
        resource.name = "acl";
        resource.statReferencesEnq( 17 );
        resource.statReferencesEnq( 18 );
        return resource;
    }() );
    EXPECT_EQ( answer( "handle", "acl", "statReferences" ), "17\n18\n" );
    EXPECT_EQ( statusOf( "handle", "acl", "meterReferences" ), ExitStatus::no );
    EXPECT_EQ( notes, "handle 'acl' has no meterReferences" );
}

TEST_F( FieldOfARecord, IsOneLineWhateverItsBytes ) {
    EXPECT_EQ( answer( "register", "cells\n", "name" ), "cells\\x0a\n" );
    EXPECT_EQ( answer( "register", "cells\n", "dataType" ), "\\x1b[2J\n" );
}

TEST_F( FieldOfARecord, TakesKindsInSingularAndPlural ) {
    for( char const* const kind : { "table", "tables" } )
        EXPECT_EQ( answer( kind, "pipe.lpm", "handle" ), "4\n" );
    for( char const* const kind : { "hash", "hashes" } )
        EXPECT_EQ( answer( kind, "hash", "fieldListHdl" ), "2\n" );
}

TEST_F( FieldOfARecord, IsOfTheExactNameElseOfTheOneThatEndsInTheWord ) {
    EXPECT_EQ( answer( "table", "acl", "handle" ), "3\n" );
    EXPECT_EQ( answer( "table", "Egress.acl", "handle" ), "2\n" );
    EXPECT_EQ( answer( "table", "lpm", "name" ), "pipe.lpm\n" );
    EXPECT_EQ( statusOf( "table", ".acl", "handle" ), ExitStatus::no );
    EXPECT_EQ( notes, "'.acl' is the end of several tables' names:" );
    EXPECT_THAT( suggestions, ElementsAre( "pipe.Egress.acl", "pipe.Ingress.acl" ) );
}

TEST_F( FieldOfARecord, OfSeveralOfANameIsAskedForByHandle ) {
    model->parser().bfTablesPush( named<BfTableInfo>( "pipe.lpm", 99 ) );
    for( char const* const word : { "lpm", "pipe.lpm" } ) {
        EXPECT_EQ( statusOf( "table", word, "handle" ), ExitStatus::no );
        EXPECT_EQ( notes, String( "'" ) + word + "' means 2 match tables; say which:" );
        EXPECT_THAT( suggestions, ElementsAre( "0x00000004", "0x00000063" ) );
    }
    EXPECT_EQ( answer( "table", "0x00000063", "handle" ), "99\n" );
    for( char const* const handle : { "0x00000004", "0x4", "4" } )
        EXPECT_EQ( answer( "table", handle, "name" ), "pipe.lpm\n" ) << handle;
}

TEST_F( FieldOfARecord, OfAnActionOfSeveralTablesIsAskedForByTheTable ) {
    auto& parser = model->parser();
    parser.bfActionsPush( { 11, "pipe.permit", "pipe.Ingress.acl" } );
    parser.bfActionsPush( { 12, "pipe.permit", "pipe.Egress.acl" } );
    parser.bfActionsPush( { 13, "deny", "pipe.Egress.acl" } );
    EXPECT_EQ( statusOf( "action", "permit", "handle" ), ExitStatus::no );
    EXPECT_EQ( notes, "'permit' means 2 actions; say which:" );
    EXPECT_THAT( suggestions,
                 ElementsAre( "pipe.permit of pipe.Egress.acl", "pipe.permit of pipe.Ingress.acl" ) );
    EXPECT_EQ( answer( "action", "pipe.permit of pipe.Egress.acl", "handle" ), "12\n" );
    EXPECT_EQ( answer( "action", "permit of Ingress.acl", "handle" ), "11\n" );
    EXPECT_EQ( answer( "action", "deny", "handle" ), "13\n" );
    EXPECT_EQ( answer( "action", "deny of acl", "handle" ), "13\n" );
    EXPECT_EQ( statusOf( "action", "permit of acl", "handle" ), ExitStatus::no );
    EXPECT_EQ( notes, "'permit of acl' means 2 actions; say which:" );
    EXPECT_THAT( suggestions,
                 ElementsAre( "pipe.permit of pipe.Egress.acl", "pipe.permit of pipe.Ingress.acl" ) );
    EXPECT_EQ( statusOf( "action", "deny of lpm", "handle" ), ExitStatus::no );
    EXPECT_EQ( notes, "no action 'deny of lpm'; actions like it:" );
    EXPECT_THAT( suggestions, ElementsAre( "deny of pipe.Egress.acl" ) );
    EXPECT_EQ( statusOf( "table", "acl of acl", "handle" ), ExitStatus::no ); // only actions have tables
    parser.bfActionsPush( { 14, "deny", "pipe.Egress.acl" } );
    EXPECT_EQ( statusOf( "action", "deny of acl", "handle" ), ExitStatus::no );
    EXPECT_THAT( suggestions,
                 ElementsAre( "0x0000000d of pipe.Egress.acl", "0x0000000e of pipe.Egress.acl" ) );
    for( String const& word : suggestions )
        EXPECT_EQ( answer( "action", word, "tableName" ), "pipe.Egress.acl\n" ) << word;
    EXPECT_EQ( answer( "action", "0x0000000e of acl", "handle" ), "14\n" );
    EXPECT_EQ( answer( "action", "0x0000000e", "tableName" ), "pipe.Egress.acl\n" );
    parser.bfActionsPush( { 15, "odd of name", "pipe.lpm" } );
    EXPECT_EQ( answer( "action", "odd of name", "handle" ), "15\n" );
    EXPECT_EQ( answer( "action", "odd of name of lpm", "handle" ), "15\n" );
}

TEST_F( FieldOfARecord, OfActionsThatShareAHandleIsAskedForByHandleAndTable ) {
    auto& parser = model->parser();
    for( char const* const table : { "pipe.Ingress.acl", "pipe.Egress.acl" } ) {
        parser.bfActionsPush( { 11, "permit", table } );
        parser.bfActionsPush( { 12, "permit", table } );
    }
    EXPECT_EQ( statusOf( "action", "permit", "handle" ), ExitStatus::no );
    EXPECT_THAT( suggestions,
                 ElementsAre( "0x0000000b of pipe.Egress.acl", "0x0000000b of pipe.Ingress.acl",
                              "0x0000000c of pipe.Egress.acl", "0x0000000c of pipe.Ingress.acl" ) );
    EXPECT_EQ( answer( "action", "0x0000000c of pipe.Egress.acl", "tableName" ), "pipe.Egress.acl\n" );
}

TEST_F( FieldOfARecord, OfRecordsThatNoWordTellsApart ) {
    auto& parser = model->parser();
    BfTableInfo lpm = named<BfTableInfo>( "pipe.lpm", 4 );
    parser.bfTablesPush( lpm ); // the same once more
    EXPECT_EQ( answer( "table", "lpm", "handle" ), "4\n" );
    lpm.size = 7;
    parser.bfTablesPush( lpm );
    EXPECT_EQ( statusOf( "table", "lpm", "size" ), ExitStatus::no );
    EXPECT_EQ( notes,
               "'lpm' means 2 match tables, and no word tells all of them apart; 'bfri tables' lists them:" );
    EXPECT_THAT( suggestions, ElementsAre( "0x00000004" ) );
}

TEST_F( FieldOfARecord, OfTheHandleOfAnotherKindSaysWhose ) {
    EXPECT_EQ( statusOf( "meter", "0x1000001", "pps" ), ExitStatus::no );
    EXPECT_EQ( notes, "no meter '0x1000001': it is the handle of the table \"pipe.Ingress.acl\"" );
}

TEST_F( FieldOfARecord, OfAnUnknownNameIsNotFound ) {
    EXPECT_EQ( statusOf( "table", "lpn", "size" ), ExitStatus::no );
    EXPECT_EQ( notes, "no table 'lpn'; names like it:" );
    EXPECT_THAT( suggestions, ElementsAre( "pipe.lpm" ) );
    EXPECT_EQ( statusOf( "meter", "lpm", "pps" ), ExitStatus::no );
    EXPECT_EQ( notes, "no meter 'lpm'; 'bfri meters' lists them all" );
}

TEST_F( FieldOfARecord, ThatTheRecordDoesNotHaveIsNotFound ) {
    EXPECT_EQ( statusOf( "phv", "hdr.a", "egressBytes" ), ExitStatus::no );
    EXPECT_EQ( notes, "phv 'hdr.a' has no egressBytes" );
}

TEST_F( FieldOfARecord, ThatPeopleSeeAsAbsentIsNotFound ) {
    struct {
        char const* kind;
        char const* name;
        char const* field;
    } const rows[] = {
        { "table", "pipe.lpm", "hitBitSmashOffset" }, { "table", "pipe.lpm", "adtHandle" },
        { "table", "pipe.lpm", "adtName" },           { "table", "pipe.lpm", "selHandle" },
        { "table", "pipe.lpm", "logicalPipe" },       { "counter", "shared", "associatedTable" },
        { "register", "cells\n", "parent" } };
    for( auto const& row : rows ) {
        EXPECT_EQ( statusOf( row.kind, row.name, row.field ), ExitStatus::no ) << row.field;
        EXPECT_EQ( notes, String( row.kind ) + " '" + Bfri::escapeForTerminal( row.name ) + "' has no " +
                              row.field );
    }
}

TEST_F( FieldOfARecord, OfNoSuchNameIsWrongUsage ) {
    struct {
        char const* kind;
        char const* field;
        char const* message;
    } const rows[] = {
        { "table", "siez",
          "table has no field 'siez'; did you mean 'size'? The fields are name, handle, size, " },
        { "learn-quantas", "x\x1B", "learn-quanta has no field 'x\\x1b'. The fields are name, handle" },
        { "header", "", "header has no field ''. The fields are name, size" },
        { "header", "Size", "header has no field 'Size'; did you mean 'size'? The fields are name, size" },
        { "tabel", "size",
          "no kind 'tabel'; did you mean 'table'? The kinds are table, resource, counter, " },
        { "", "size", "no kind ''. The kinds are table, " },
        { "frobnicators", "size", "no kind 'frobnicators'. The kinds are table, " },
    };
    for( auto const& row : rows ) {
        auto const outcome = bfri( { "field", "switch.conf", row.kind, "pipe.lpm", row.field } );
        EXPECT_EQ( outcome.status, 2 );
        EXPECT_THAT( outcome.err, StartsWith( String( "bfri: " ) + row.message ) );
    }
}

TEST_F( FieldOfARecord, HelpNamesEveryKind ) {
    auto const help = bfri( { "field", "--help" } ).out;
    for( Bfri::RecordKind const& kind : Bfri::recordKinds() )
        EXPECT_THAT( help, HasSubstr( kind.one ) );
}

TEST_F( FieldOfARecord, IsAnsweredByTheProgram ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", contextOf( matchTable( "pipe.lpm", 1 ) ) );
    auto const outcome = bfri( { "field", "switch.conf", "table", "lpm", "size" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_EQ( outcome.out, "64\n" );
    EXPECT_EQ( outcome.err, "" );
    EXPECT_EQ( bfri( { "field", "switch.conf", "table", "lpm" } ).status, 2 );
    EXPECT_EQ( bfri( { "field", "switch.conf", "table", "lpm", "size", "handle" } ).status, 2 );
}

} // namespace
