// Holds the CMPI records to their binary layout, in every C++ source that uses them.
//
// Each function table is a sequence of pointer-sized slots, so the last member of each version tells whether
// one was lost, added or moved; tests/cmpi checks every member. The expressions are pointer counts and thus
// the same for 32-bit and 64-bit machines.
#ifndef KESTO_CMPI_LAYOUT_H
#define KESTO_CMPI_LAYOUT_H

// Slot 0 is ftVersion (in a management interface ftVersion, miVersion and the name take up the first 8 bytes
// and one pointer).
#define CMPI_AT_SLOT(table, member, slot) \
    static_assert(offsetof(table, member) == (slot) * sizeof(void*), #table "." #member " is out of place")
#define CMPI_MI_AT_SLOT(table, member, slot)                             \
    static_assert(offsetof(table, member) == 8 + (slot) * sizeof(void*), \
                  #table "." #member " is out of place")

static_assert(sizeof(CMPIBoolean) == 1 && sizeof(CMPIChar16) == 2 && sizeof(CMPIReal32) == 4 &&
              sizeof(CMPIReal64) == 8);
static_assert(sizeof(CMPIUint8) == 1 && sizeof(CMPIUint16) == 2 && sizeof(CMPIUint32) == 4 &&
              sizeof(CMPIUint64) == 8);
static_assert(sizeof(CMPISint8) == 1 && sizeof(CMPISint16) == 2 && sizeof(CMPISint32) == 4 &&
              sizeof(CMPISint64) == 8);
static_assert(sizeof(CMPIType) == 2 && sizeof(CMPIValueState) == 2 && sizeof(CMPICount) == 4);
static_assert(sizeof(CMPIrc) == 4 && sizeof(CMPIVersion) == 4);

// A value is 16 bytes on a 64-bit machine, because of the pointer with a length, and 8 on a 32-bit one.
static_assert(sizeof(CMPIValuePtr) == 2 * sizeof(void*));
static_assert(sizeof(CMPIValue) == 2 * sizeof(void*));
static_assert(sizeof(CMPIStatus) == 2 * sizeof(void*) && offsetof(CMPIStatus, msg) == sizeof(void*));
static_assert(offsetof(CMPIData, state) == 2 && offsetof(CMPIData, value) == sizeof(void*) &&
              sizeof(CMPIData) == 3 * sizeof(void*));

CMPI_AT_SLOT(CMPIBroker, xft, 3);
CMPI_MI_AT_SLOT(CMPIBrokerFT, getProperty, 18);
CMPI_AT_SLOT(CMPIBrokerEncFT, trace, 16);
CMPI_AT_SLOT(CMPIBrokerExtFT, signalCondition, 20);
CMPI_AT_SLOT(CMPIContextFT, addEntry, 6);
CMPI_AT_SLOT(CMPIResultFT, returnDone, 6);
CMPI_AT_SLOT(CMPIStringFT, getCharPtr, 3);
CMPI_AT_SLOT(CMPIArrayFT, setElementAt, 6);
CMPI_AT_SLOT(CMPIEnumerationFT, toArray, 5);
CMPI_AT_SLOT(CMPIInstanceFT, setObjectPath, 9);
CMPI_AT_SLOT(CMPIObjectPathFT, toString, 19);
CMPI_AT_SLOT(CMPIArgsFT, getArgCount, 6);
CMPI_AT_SLOT(CMPIDateTimeFT, isInterval, 5);
CMPI_AT_SLOT(CMPISelectExpFT, evaluateUsingAccessor, 7);
CMPI_AT_SLOT(CMPISelectCondFT, getSubCondAt, 4);
CMPI_AT_SLOT(CMPISubCondFT, getPredicate, 5);
CMPI_AT_SLOT(CMPIPredicateFT, evaluateUsingAccessor, 4);

static_assert(offsetof(CMPIInstanceMIFT, miVersion) == 4 && offsetof(CMPIInstanceMIFT, miName) == 8);
CMPI_MI_AT_SLOT(CMPIInstanceMIFT, execQuery, 8);
CMPI_MI_AT_SLOT(CMPIAssociationMIFT, referenceNames, 5);
CMPI_MI_AT_SLOT(CMPIMethodMIFT, invokeMethod, 2);
CMPI_MI_AT_SLOT(CMPIPropertyMIFT, getProperty, 3);
CMPI_MI_AT_SLOT(CMPIIndicationMIFT, disableIndications, 7);

#ifdef CMPI_VER_200
CMPI_AT_SLOT(CMPIBroker, mft, 4);
CMPI_AT_SLOT(CMPIBrokerEncFT, getMessage2, 20);
CMPI_AT_SLOT(CMPIBrokerMemFT, freeSelectExp, 14);
CMPI_AT_SLOT(CMPIResultFT, returnError, 7);
CMPI_AT_SLOT(CMPIInstanceFT, setPropertyWithOrigin, 10);
CMPI_AT_SLOT(CMPIErrorFT, setMessageArguments, 26);
CMPI_MI_AT_SLOT(CMPIPropertyMIFT, setPropertyWithOrigin, 4);
#endif

#ifdef CMPI_VER_210
CMPI_MI_AT_SLOT(CMPIBrokerFT, referencesFiltered, 21);
CMPI_AT_SLOT(CMPIBrokerEncFT, newEnumerationFilter, 23);
CMPI_AT_SLOT(CMPIBrokerExtFT, destroyCondition2, 24);
CMPI_AT_SLOT(CMPIBrokerMemFT, freeChars, 15);
CMPI_AT_SLOT(CMPIStringFT, newCharsCP, 4);
CMPI_AT_SLOT(CMPIPropertyListFT, getProperties, 4);
CMPI_AT_SLOT(CMPIEnumerationFilterFT, match, 3);
CMPI_MI_AT_SLOT(CMPIInstanceMIFT, enumerateInstancesFiltered, 9);
CMPI_MI_AT_SLOT(CMPIAssociationMIFT, referencesFiltered, 7);
CMPI_MI_AT_SLOT(CMPIIndicationMIFT, deActivateFilterCollection, 10);
#endif

#undef CMPI_AT_SLOT
#undef CMPI_MI_AT_SLOT

#endif
