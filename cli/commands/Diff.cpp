#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "cli/commands/Meant.h"
#include "cli/terminal/DiffText.h"
#include "inspect/model/Codes.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

Row noticeExplanationRow( NoticeKind const& kind ) {
    return { { "code", kind.code },
             { "title", kind.title },
             { "level", wordOf( kind.level ) },
             { "meaning", kind.meaning },
             { "advice", kind.advice } };
}

void explainNotice( Request const& request, std::ostream& out ) {
    String const word = request.option( "--explain" );
    NoticeKind const* const one = codedAs( noticeKinds(), word );
    if( word != "all" && !one )
        refuseCode( "notice", word, codesLike( noticeKinds(), word ) );
    auto const kinds = one ? std::span( one, 1 ) : noticeKinds();
    if( request.format == Format::json || one )
        return printExplanations( listOf( kinds, noticeExplanationRow ), request.format, out );
    for( NoticeKind const& kind : kinds )
        out << kind.code << "  " << kind.title << " (" << wordOf( kind.level ) << ")\n       " << kind.meaning
            << '\n';
}

bool fails( String const& failOn, Verdict const& verdict ) {
    if( failOn == "never" )
        return false;
    if( failOn == "breaking" )
        return !verdict.byName;
    return failOn == "handles" ? !verdict.byName || !verdict.byHandle : verdict.differs;
}

ExitStatus compareAndPrint( Request const& request, Streams const& io ) {
    ComparisonScope const scope{
        request.has( "--only" ) ? kindOf( std::string_view( request.option( "--only" ) ) ) : nullptr,
        !request.has( "--no-renames" ) };
    auto const old = load( request.words[ 0 ], *request.command, io.err, Survey::digests );
    auto const now = load( request.words[ 1 ], *request.command, io.err, Survey::digests );
    Comparison const comparison = compare( old, now, scope );
    Verdict const verdict = verdictOf( comparison );
    if( request.format == Format::json ) {
        JsonAnswer answer( io.out );
        answer.member( "old", request.words[ 0 ] );
        answer.member( "new", request.words[ 1 ] );
        answer.members( rowOf( comparison, verdict ) );
    } else if( request.has( "--markdown" ) )
        printMarkdown( io.out, comparison, verdict );
    else
        printDiff( io.out, io.look, comparison, verdict, request.has( "--unread" ) );
    return fails( request.option( "--fail-on" ), verdict ) ? ExitStatus::no : ExitStatus::done;
}

} // namespace

ExitStatus diff( Request const& request, Streams const& io ) {
    bool const explains = request.has( "--explain" );
    if( request.words.size() != ( explains ? 0 : 2 ) )
        throw Failure( ExitStatus::usage, explains ? "--explain goes without OLD and NEW"
                                                   : "diff takes OLD and NEW, or --explain CODE" );
    if( !explains )
        return compareAndPrint( request, io );
    explainNotice( request, io.out );
    return ExitStatus::done;
}

} // namespace Bfri
