#include "resourceinfo/parser/context/InputFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Context {

int openRegularFile( String const& path, String& reason ) {
    // Without O_NONBLOCK, opening a pipe waits for its writer.
    int const descriptor = ::open( path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC );
    struct stat status;
    if( descriptor < 0 || fstat( descriptor, &status ) != 0 )
        reason = std::strerror( errno );
    else if( !S_ISREG( status.st_mode ) && !S_ISDIR( status.st_mode ) )
        reason = "Not a regular file";
    else
        return descriptor;
    if( descriptor >= 0 )
        ::close( descriptor );
    return -1;
}

} // namespace Context
