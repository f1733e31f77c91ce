#pragma once

#include <iosfwd>

using std::ios;
using std::iostream;
using std::istream;
using std::ostream;
using std::streampos;
