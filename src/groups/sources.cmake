list(APPEND TELOR_HEADERS
  groups/paramgroupitem.h
  groups/paramgroupinfobase.h
  groups/paramgroupinfo.h
  groups/paramgroupcopypasteremoveinfo.h
  groups/paramgroupinsertparametersinfo.h
  groups/paramgroupremoveparametersinfo.h
)
list(APPEND TELOR_SOURCES
  groups/grouplogtext_p.h
  groups/paramgroupitem.cpp
  groups/paramgroupinfobase.cpp
  groups/paramgroupinfo.cpp
  groups/paramgroupcopypasteremoveinfo.cpp
  groups/paramgroupinsertparametersinfo.cpp
  groups/paramgroupremoveparametersinfo.cpp
  groups/grouplogtext.cpp
)
