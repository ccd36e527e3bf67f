#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "cli/terminal/Characters.h"
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

void printNoticeExplanation( NoticeKind const& kind, std::ostream& out ) {
    out << kind.code << ' ' << kind.title << " (" << wordOf( kind.level ) << ")\n\n"
        << kind.meaning << "\n\nWhat to do: " << kind.advice << '\n';
}

NoticeKind const& noticeMeant( String const& word ) {
    if( NoticeKind const* const kind = codedAs( noticeKinds(), word ) )
        return *kind;
    auto const suggestions = codesLike( noticeKinds(), word );
    throw Failure( ExitStatus::usage,
                   "no notice has the code '" + escapeForTerminal( word ) + "'; " +
                       ( suggestions.empty() ? "'--explain all' lists them" : "codes like it:" ),
                   suggestions );
}

void explainNotice( Request const& request, std::ostream& out ) {
    String const word = request.option( "--explain" );
    auto const all = noticeKinds();
    NoticeKind const* const one = word == "all" ? nullptr : &noticeMeant( word );
    auto const kinds = one ? std::span( one, 1 ) : all;
    if( request.format == Format::json ) {
        JsonAnswer( out ).member( "codes", listOf( kinds, noticeExplanationRow ) );
        return;
    }
    if( one )
        return printNoticeExplanation( *one, out );
    for( NoticeKind const& kind : all )
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
