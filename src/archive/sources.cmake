list(APPEND TELOR_HEADERS
  archive/archivevalue.h
  archive/archiveparamdata.h
  archive/archivequery.h
  archive/archivequerycancel.h
  archive/archiveresult.h
)
list(APPEND TELOR_SOURCES
  archive/archivevalue.cpp
  archive/archiveparamdata.cpp
  archive/archivequery.cpp
  archive/archivequerycancel.cpp
  archive/archiveresult.cpp
)
