#ifndef DEMOSECTIONS_H
#define DEMOSECTIONS_H

#include <QtCore/QTextStream>

// The demo walks through the library one section at a time; each section lives in a
// file of its own and prints to the stream it is given.

/** Scalar parameters, client handles, change flags and the wire record. */
void demoParameterValues(QTextStream &out);

/**
 * The road of one value: a simulated server, two subscribed clients and a one-shot
 * snapshot, with values crossing their setpoints tick by tick (about three seconds).
 */
void demoRoadOfAValue(QTextStream &out);

/**
 * Parameter descriptions: names and units in two languages, scale and thresholds, the
 * text of a discrete value, and a status word bit by bit and as a whole-word fault.
 */
void demoDescriptions(QTextStream &out);

/**
 * The application's start: the query for the parameter list, the list received whole
 * with its group tree and event types, then a notice of a changed description and the
 * bit-change events of a status word shown as text.
 */
void demoInfoList(QTextStream &out);

/**
 * Collection and field parameters: a list and a map with their health words, and a small
 * field sent cell by cell by one side and applied on the other, printed as a grid.
 */
void demoFields(QTextStream &out);

/**
 * Archive access: a query for a time span, its sections, an answer in two pieces as a
 * server sends it, and the first points of each series as the client reads them.
 */
void demoArchive(QTextStream &out);

/**
 * Parameter groups: a small tree, an edit sent as a message and applied by the receiver,
 * the operators' log text of the edit in two languages, and the tree as XML.
 */
void demoGroups(QTextStream &out);

/**
 * Events: a query for a span, the answer as a server sends it, and each record printed
 * with the name of its type and the text of its message from the event type catalogue.
 */
void demoEvents(QTextStream &out);

/**
 * Tags, packed records and the core map: a server's tag block read and asked in two
 * languages, a packed record as bytes with its side stream, and the core file read into
 * the global core map.
 */
void demoTagsAndCore(QTextStream &out);

#endif // DEMOSECTIONS_H
