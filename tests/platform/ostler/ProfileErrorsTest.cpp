// Switch configurations that are JSON but not what is expected, and files that cannot be read.

#include "tests/platform/ostler/OstlerFixture.h"

#include <sys/stat.h>

namespace {

class ProfileErrors : public OstlerFixture {
  protected:
    void expectNoDevices() const {
        EXPECT_EQ( context_.profile.numDevices, 0 );
        EXPECT_TRUE( context_.profile.devices.empty() );
    }

    /// The parts of the reason: what was expected and what was found. Other reasons have none.
    static void expectParts( Ostler::Status const& status ) {
        std::string const found = status.found.empty() ? "" : ", found " + status.found;
        if( status.reason.starts_with( "expected " ) )
            EXPECT_EQ( "expected " + status.expected + found, status.reason );
        else
            EXPECT_EQ( status.expected + found, "" );
    }

    /// A status as expected, kept in the context, and no devices.
    void expectError( Ostler::Status const& status, std::string const& text ) const {
        EXPECT_FALSE( status.ok() );
        EXPECT_EQ( status.text(), text );
        EXPECT_EQ( context_.status.text(), text );
        expectParts( status );
        expectNoDevices();
    }
};

struct ProfileRow {
    std::string text;
    std::string error; ///< "LINE:COLUMN: REASON"
};

std::string found( char const* what, char const* value ) {
    return "expected " + std::string( what ) + ", found " + value;
}

/// A configuration with one device, or one pipeline, of the given members.
std::string device( std::string const& members ) { return "{\"devices\":[\n{" + members + "}]}"; }
std::string pipeline( std::string const& members ) { return device( "\"pipelines\":[\n{" + members + "}]" ); }

struct Value {
    char const* json;
    char const* kind;
};

constexpr Value values[] = {
    { "null", "null" },
    { "true", "a boolean" },
    { "false", "a boolean" },
    { "17", "a number" },
    { "-1.5", "a number" },
    { "\"x\"", "a string" },
    { "[ 1, [ 2 ] ]", "an array" },
    { "{ \"a\": 1 }", "an object" },
};

/// A place for a value, and what must be there.
struct Place {
    std::string before, after;
    char const* kind;
    char const* expected;
    char const* position;
};

Place const places[] = {
    { "", "", "an object", "the configuration to be an object", "1:1" },
    { "{ \"devices\":", "}", "an array", "\"devices\" to be an array", "1:13" },
    { "{\"devices\":[ {\"pipelines\":[]}, ", "]}", "an object", "a device to be an object", "1:32" },
    { "{\"devices\":[\n{\"runtime_config\":", ", \"pipelines\":[]}]}", "a string",
      "\"runtime_config\" to be a string", "2:19" },
    { "{\"devices\":[\n{\"pipelines\":", "}]}", "an array", "\"pipelines\" to be an array", "2:14" },
    { "{\"devices\":[{\"pipelines\":\n[", "]}]}", "an object", "a pipeline to be an object", "2:2" },
    { "{\"devices\":[{\"pipelines\":[{\n\"context_file\":", ",\"pipes\":[]}]}]}", "a string",
      "\"context_file\" to be a string", "2:16" },
    { "{\"devices\":[{\"pipelines\":[{\n\"context_file\":\"c\",\"pipes\":", "}]}]}", "an array",
      "\"pipes\" to be an array", "2:28" },
};

TEST_F( ProfileErrors, AWrongTypeAnywhereIsNamedWithItsPlace ) {
    for( Place const& place : places )
        for( Value const& value : values ) {
            if( std::string_view( value.kind ) == place.kind )
                continue;
            SCOPED_TRACE( place.expected );
            expectError( read( place.before + value.json + place.after ),
                         file() + ":" + place.position + ": " + found( place.expected, value.kind ) );
        }
}

TEST_F( ProfileErrors, APipeMustBeAnUnsigned32BitNumber ) {
    for( char const* const pipe : { "-1", "4294967296", "18446744073709551616", "1.5", "1.0", "1e0", "\"x\"",
                                    "\"1\"", "null", "true", "[ 1 ]", "{}" } ) {
        SCOPED_TRACE( pipe );
        expectError( read( pipeline( R"("context_file":"c","pipes":[ 1,)" + std::string( pipe ) + ", 2 ]" ) ),
                     file() + ":3:33: expected a pipe to be an unsigned 32-bit number" );
    }
}

TEST_F( ProfileErrors, AMissingMemberIsNamedAtItsObject ) {
    ProfileRow const rows[] = {
        { "{}", "1:1: expected a member \"devices\"" },
        { "\n  {\"device\":[]}", "2:3: expected a member \"devices\"" },
        { "{\"devices\\u0000\":[]}", "1:1: expected a member \"devices\"" },
        { device( "" ), "2:1: expected a member \"pipelines\"" },
        { device( "\"runtime_config\":\"b\"" ), "2:1: expected a member \"pipelines\"" },
        { pipeline( "" ), "3:1: expected a member \"context_file\"" },
        { pipeline( "\"pipes\":[]" ), "3:1: expected a member \"context_file\"" },
        { pipeline( "\"context_file\":\"c\"" ), "3:1: expected a member \"pipes\"" },
    };
    for( ProfileRow const& row : rows ) {
        SCOPED_TRACE( row.text );
        expectError( read( row.text ), file() + ":" + row.error );
    }
}

std::string repeated( std::string const& item, int count ) {
    std::string result = item;
    for( int i = 1; i < count; ++i )
        result += "," + item;
    return result;
}

TEST_F( ProfileErrors, MoreDevicesOrPipelinesThanAByteCountsAreTooMany ) {
    for( int const count : { 256, 257, 512 } ) {
        SCOPED_TRACE( count );
        expectError( read( "{ \"devices\": [" + repeated( "{\"pipelines\":[]}", count ) + "]}" ),
                     file() + ":1:14: expected at most 255 devices, found " + std::to_string( count ) );
        expectError( read( device( "\"pipelines\":[" +
                                   repeated( "{\"context_file\":\"c\",\"pipes\":[]}", count ) + "]" ) ),
                     file() + ":2:14: expected at most 255 pipelines, found " + std::to_string( count ) );
    }
}

TEST_F( ProfileErrors, TheSecondDeviceIsCheckedAsTheFirst ) {
    expectError( read( "{\"devices\":[{\"pipelines\":[{\"context_file\":\"c\",\"pipes\":[1]}]},\n7]}" ),
                 file() + ":2:1: expected a device to be an object, found a number" );
}

// The place is found by looking back over the text, so quotes and brackets in it must not mislead.
TEST_F( ProfileErrors, PlacesAreExactWhateverStandsBefore ) {
    ProfileRow const rows[] = {
        { R"({"devices":"a\"b"})", "1:12: expected \"devices\" to be an array, found a string" },
        { R"({"devices":"\\"})", "1:12: expected \"devices\" to be an array, found a string" },
        { R"({"x":"\\\"","devices":"\\\\\"\\"})",
          "1:23: expected \"devices\" to be an array, found a string" },
        { R"({"devices":""})", "1:12: expected \"devices\" to be an array, found a string" },
        { "{\"devices\"\t:\t1}", "1:14: expected \"devices\" to be an array, found a number" },
        { "{\"devices\"\r\n:\r\n\r\n true}", "4:2: expected \"devices\" to be an array, found a boolean" },
        { "{\"x\":\"\xc3\xa4\", \"devices\":1}",
          "1:22: expected \"devices\" to be an array, found a number" },
        { "{\"devices\":[0]}", "1:13: expected a device to be an object, found a number" },
        { "{\"devices\":[{\"pipelines\":[]},-2]}",
          "1:30: expected a device to be an object, found a number" },
        { "  7", "1:3: expected the configuration to be an object, found a number" },
        { "\n\n\"text\"\n", "3:1: expected the configuration to be an object, found a string" },
    };
    for( ProfileRow const& row : rows ) {
        SCOPED_TRACE( row.text );
        expectError( read( row.text ), file() + ":" + row.error );
    }
}

TEST_F( ProfileErrors, AFailedReadingLeavesNothingOfAFormerOne ) {
    std::string const good = pipeline( R"("context_file":"c","pipes":[ 1 ])" );
    for( std::string const bad : { "", "{", "{}", "{\"devices\":[{\"pipelines\":[]},1]}" } ) {
        SCOPED_TRACE( bad );
        ASSERT_TRUE( read( good ).ok() );
        ASSERT_EQ( context_.profile.numDevices, 1 );
        EXPECT_FALSE( read( bad ).ok() );
        EXPECT_FALSE( context_.status.ok() );
        expectNoDevices();
    }
    ASSERT_TRUE( read( good ).ok() );
    EXPECT_TRUE( context_.status.ok() );
    EXPECT_EQ( context_.profile.numDevices, 1 );
}

TEST_F( ProfileErrors, AFileThatCannotBeReadIsNamedWithoutAPlace ) {
    std::string const missing = ( folder_ / "missing.conf" ).string();
    std::string const throughFile = file() + "/x";
    std::string const pipe = ( folder_ / "pipe" ).string();
    ASSERT_EQ( mkfifo( pipe.c_str(), 0600 ), 0 );
    ProfileRow const rows[] = {
        { missing, missing + ": No such file or directory" },
        { folder_.string(), folder_.string() + ": Is a directory" },
        { throughFile, throughFile + ": Not a directory" },
        { pipe, pipe + ": Not a regular file" },
        { "/dev/zero", "/dev/zero: Not a regular file" },
        { "", ": No such file or directory" },
    };
    for( ProfileRow const& row : rows ) {
        SCOPED_TRACE( row.text );
        ASSERT_TRUE( read( device( "\"pipelines\":[]" ) ).ok() );
        expectError( readPath( row.text ), row.error );
        EXPECT_EQ( context_.status.file, row.text );
        EXPECT_EQ( context_.status.line, 0U );
        EXPECT_EQ( context_.status.column, 0U );
    }
}

TEST_F( ProfileErrors, TheStatusCarriesItsPartsOneByOne ) {
    auto const status = read( "{\n\"devices\": 1 }" );
    EXPECT_EQ( status.file, file() );
    EXPECT_EQ( status.line, 2U );
    EXPECT_EQ( status.column, 12U );
    EXPECT_EQ( status.reason, "expected \"devices\" to be an array, found a number" );
    EXPECT_EQ( status.expected, "\"devices\" to be an array" );
    EXPECT_EQ( status.found, "a number" );
    auto const missing = read( "{}" );
    EXPECT_EQ( missing.expected, "a member \"devices\"" );
    EXPECT_EQ( missing.found, "" );
    EXPECT_EQ( read( "{" ).expected, "" );
}

TEST_F( ProfileErrors, AreKeptInTheProcessWideContextToo ) {
    OstlerContext* const context = Ostler::sdkContext();
    std::string const missing = ( folder_ / "missing.conf" ).string();
    Ostler::initializeDeviceProfileFromConfig( context, nullptr, nullptr, nullptr, missing.c_str() );
    EXPECT_EQ( Ostler::sdkContext()->status.text(), missing + ": No such file or directory" );
    *context = {};
}

} // namespace
