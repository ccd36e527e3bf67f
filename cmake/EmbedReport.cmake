# Makes a source file with the report's style sheet and script as constants, and the script's SHA-256:
# cmake -D FOLDER=report -D OUTPUT=Embedded.cpp -P EmbedReport.cmake
cmake_minimum_required( VERSION 3.25 )
file( READ ${FOLDER}/report.css style )
file( READ ${FOLDER}/report.js script )
string( REGEX REPLACE "/\\*[^*]*\\*+([^/*][^*]*\\*+)*/" "" style "${style}" ) # comments stay in the tree
string( REGEX REPLACE "[ \t]*\n[ \t\n]*" "\n" style "${style}" )
string( SHA256 hash "${script}" )

# constant( NAME TEXT ): raw literals one after the other, as a compiler need not take more than 65,536 characters in one.
set( source "#include \"report/Html.h\"\n\nnamespace Bfri {\n\n" )
function( constant name text )
    set( literals "" )
    string( LENGTH "${text}" length )
    set( at 0 )
    while( at LESS length )
        string( SUBSTRING "${text}" ${at} 8000 part )
        string( APPEND literals "\nR\"~~(${part})~~\"" )
        math( EXPR at "${at} + 8000" )
    endwhile()
    set( source "${source}Literal const ${name} =${literals};\n" PARENT_SCOPE )
endfunction()
constant( styleSheet "${style}" )
constant( script "${script}" )
constant( scriptHash "${hash}" )
file( WRITE ${OUTPUT} "${source}\n} // namespace Bfri\n" )
