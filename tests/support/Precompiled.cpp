// The headers of Precompiled.h are all that there is to compile.
