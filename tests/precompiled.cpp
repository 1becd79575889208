// The headers that most tests include are precompiled on behalf of this file (CMakeLists.txt).
