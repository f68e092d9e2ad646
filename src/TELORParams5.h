#ifndef TELORPARAMS5_H
#define TELORPARAMS5_H

/**
 * @file TELORParams5.h
 * @brief Umbrella header: every public header of libTELORParams5 and of the two
 * platform libraries it stands on.
 */

// Platform: messages, packets, streams, translatable text
#include "qprotocolstruct.h"
#include "qcontainerpacket.h"
#include "telorstream.h"
#include "qxmltranslation.h"
#include "multitranslator.h"
#include "getdtstring.h"

// Parameter values
#include "calclimit.h"
#include "abstractparameterbase.h"
#include "parambaseptr.h"
#include "bpdiscrete.h"
#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "bplist.h"
#include "bpmap.h"
#include "parambasefieldptr.h"
#include "bpfield.h"
#include "fieldelement.h"
#include "bpfieldclient.h"
#include "abstractvalue.h"

// Parameter description
#include "paramlimits.h"
#include "paramsetpoints.h"
#include "parambitcombination.h"
#include "paramenum.h"
#include "parambitfield.h"
#include "paraminfo.h"
#include "paraminfoquery.h"
#include "paraminfochanged.h"
#include "paraminfoadded.h"
#include "paraminforestore.h"
#include "paraminfolist.h"

// Current data exchange
#include "paramvaluesquery.h"
#include "paramvaluesresult.h"
#include "paramvaluesstruct.h"
#include "paramsubscriptionquery.h"
#include "paramsubscriptionresult.h"
#include "clientparamsubscription.h"

// Archive access
#include "archivevalue.h"
#include "archiveparamdata.h"
#include "archivequery.h"
#include "archivequerycancel.h"
#include "archiveresult.h"

// Parameter groups
#include "paramgroupitem.h"
#include "paramgroupinfobase.h"
#include "paramgroupinfo.h"
#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupremoveparametersinfo.h"

// Events
#include "translationitemnew.h"
#include "translationtable.h"
#include "eventtypeinfostruct.h"
#include "eventstruct.h"
#include "registratoreventstruct.h"
#include "eventstructwithreaded.h"
#include "intervalquery.h"
#include "eventsquerybase.h"
#include "eventsquery.h"
#include "eventsquerycancel.h"
#include "eventsreadedquery.h"
#include "eventsresultbase.h"
#include "eventsarchiveresult.h"
#include "eventsdaydata.h"
#include "eventsintervaldata.h"
#include "eventbasesubscription.h"
#include "eventsubscription.h"
#include "eventsubscriptioncancel.h"
#include "eventstatisticssubscription.h"
#include "eventstatisticssubscriptioncancel.h"

// Tags
#include "telortagobject.h"

// Packed structures and core map
#include "abstractvaluestruct.h"
#include "datetimestruct.h"
#include "sevenfloat.h"
#include "sevenuint.h"
#include "azcoord.h"
#include "validityfloat.h"
#include "validitydouble.h"
#include "corepoint.h"
#include "corefunctions.h"

#endif // TELORPARAMS5_H
