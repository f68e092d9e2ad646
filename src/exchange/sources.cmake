list(APPEND TELOR_HEADERS
  exchange/paramvaluesquery.h
  exchange/paramvaluesresult.h
  exchange/paramvaluesstruct.h
  exchange/paramsubscriptionquery.h
  exchange/paramsubscriptionresult.h
  exchange/clientparamsubscription.h
)
list(APPEND TELOR_SOURCES
  exchange/parametersunder_p.h
  exchange/paramvaluesquery.cpp
  exchange/paramvaluesresult.cpp
  exchange/paramvaluesstruct.cpp
  exchange/paramsubscriptionquery.cpp
  exchange/paramsubscriptionresult.cpp
  exchange/clientparamsubscription.cpp
)
