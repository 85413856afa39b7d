// The classes of the interop namespaces: interop.mof with the qualifiers and superclasses that it needs. They
// are part of the program, because the server answers for exactly these, whatever it serves besides.
#ifndef KESTO_SERVER_INTEROP_INTEROP_MOF_H
#define KESTO_SERVER_INTEROP_INTEROP_MOF_H

namespace cimserver {

extern const char* const INTEROP_MOF;

} // namespace cimserver

#endif
