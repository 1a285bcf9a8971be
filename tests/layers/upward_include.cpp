// Compiled inside one layer with a header of a layer it must not see: the build has to refuse
// it. ZEL_PROBE_HEADER names the header.
#include ZEL_PROBE_HEADER
