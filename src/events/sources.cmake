list(APPEND TELOR_HEADERS
  events/translationitemnew.h
  events/translationtable.h
  events/eventtypeinfostruct.h
)
list(APPEND TELOR_SOURCES
  events/translationitemnew.cpp
  events/translationtable.cpp
  events/eventtypeinfostruct.cpp
)
