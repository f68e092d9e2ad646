list(APPEND TELOR_HEADERS
  values/calclimit.h
  values/abstractparameterbase.h
  values/parambaseptr.h
  values/bpdiscrete.h
  values/bpdouble.h
  values/bpstring.h
  values/bpvariant.h
  values/abstractvalue.h
)
list(APPEND TELOR_SOURCES
  values/calclimit.cpp
  values/abstractparameterbase.cpp
  values/parambaseptr.cpp
  values/bpdiscrete.cpp
  values/bpdouble.cpp
  values/bpstring.cpp
  values/bpvariant.cpp
  values/abstractvalue.cpp
  values/wirestream.cpp
)
