// The inflater of this build: cmake -DBFRESOURCEINFO_INFLATE=isal or zlib.

#ifdef BFRI_INFLATE_ISAL
#include "resourceinfo/parser/context/IsalFile.h"
using File = Context::IsalFile;
#else
#include "resourceinfo/parser/context/ZlibFile.h"
using File = Context::ZlibFile;
#endif

std::unique_ptr<Context::InputFile> Context::gzipFile() { return std::make_unique<File>(); }
