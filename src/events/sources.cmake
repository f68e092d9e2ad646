list(APPEND TELOR_HEADERS
  events/translationitemnew.h
)
list(APPEND TELOR_SOURCES
  events/translationitemnew.cpp
)
