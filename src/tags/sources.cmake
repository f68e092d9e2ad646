list(APPEND TELOR_HEADERS
  tags/telortagobject.h
)
list(APPEND TELOR_SOURCES
  tags/telortagobject.cpp
)
