list(APPEND TELOR_HEADERS
  description/paramlimits.h
  description/paramsetpoints.h
  description/parambitcombination.h
  description/paramenum.h
  description/parambitfield.h
  description/paraminfo.h
)
list(APPEND TELOR_SOURCES
  description/descriptionwire_p.h
  description/paramlimits.cpp
  description/paramsetpoints.cpp
  description/parambitcombination.cpp
  description/paramenum.cpp
  description/parambitfield.cpp
  description/parambitword.cpp
  description/paraminfo.cpp
)
