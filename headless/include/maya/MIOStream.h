#pragma once

#include <iostream>

using std::cerr;
using std::cout;
using std::endl;
using std::ostream;
