// Boost.JSON itself, for a standard library that the system's Boost is not compiled for.
#include <boost/json/src.hpp>
