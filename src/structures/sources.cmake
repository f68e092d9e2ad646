list(APPEND TELOR_HEADERS
  structures/abstractvaluestruct.h
  structures/datetimestruct.h
  structures/sevenfloat.h
  structures/sevenuint.h
  structures/azcoord.h
  structures/validityfloat.h
  structures/validitydouble.h
  structures/corepoint.h
  structures/corefunctions.h
)
list(APPEND TELOR_SOURCES
  structures/rawrecord_p.h
  structures/abstractvaluestruct.cpp
  structures/datetimestruct.cpp
  structures/sevenfloat.cpp
  structures/sevenuint.cpp
  structures/azcoord.cpp
  structures/validityfloat.cpp
  structures/validitydouble.cpp
  structures/corepoint.cpp
  structures/corefile_p.h
  structures/corefile.cpp
  structures/corefunctions.cpp
)
