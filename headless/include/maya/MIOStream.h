#pragma once

#include <maya/MIOStreamFwd.h>

#include <iostream>

using std::cerr;
using std::cin;
using std::clog;
using std::cout;

using std::endl;
using std::flush;
using std::ws;
