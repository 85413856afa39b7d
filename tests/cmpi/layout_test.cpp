// The CMPI declarations against numbers worked out by hand: type codes, record sizes for both machine widths,
// and the place of every member of every function table.
#include <cmpidt.h>
#include <cmpift.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

constexpr bool IS64 = sizeof(void*) == 8;

struct Member {
    const char* name;
    std::size_t offset;
};

// The members stand in the order of the interface, each in a slot of its own after `start` bytes.
void expect_slots(std::size_t start, const std::vector<Member>& members, std::size_t tableSize) {
    std::size_t expected = start;
    for (const Member& member : members) {
        EXPECT_EQ(member.offset, expected) << member.name;
        expected += IS64 ? 8 : 4;
    }
    EXPECT_EQ(tableSize, expected) << "the table has more members";
}

#define AT(member)                       \
    Member {                             \
#member, offsetof(Table, member) \
    }

TEST(CmpiTypes, SimpleTypesHaveTheirCodes) {
    EXPECT_EQ(CMPI_null, 0);
    EXPECT_EQ(CMPI_boolean, 2);
    EXPECT_EQ(CMPI_char16, 3);
    EXPECT_EQ(CMPI_real32, 8);
    EXPECT_EQ(CMPI_real64, 12);
    EXPECT_EQ(CMPI_uint8, 128);
    EXPECT_EQ(CMPI_uint16, 144);
    EXPECT_EQ(CMPI_uint32, 160);
    EXPECT_EQ(CMPI_uint64, 176);
    EXPECT_EQ(CMPI_sint8, 192);
    EXPECT_EQ(CMPI_sint16, 208);
    EXPECT_EQ(CMPI_sint32, 224);
    EXPECT_EQ(CMPI_sint64, 240);
}

TEST(CmpiTypes, EncapsulatedTypesHaveTheirCodes) {
    EXPECT_EQ(CMPI_instance, 4096);
    EXPECT_EQ(CMPI_ref, 4352);
    EXPECT_EQ(CMPI_args, 4608);
    EXPECT_EQ(CMPI_class, 4864);
    EXPECT_EQ(CMPI_filter, 5120);
    EXPECT_EQ(CMPI_enumeration, 5376);
    EXPECT_EQ(CMPI_string, 5632);
    EXPECT_EQ(CMPI_chars, 5888);
    EXPECT_EQ(CMPI_dateTime, 6144);
    EXPECT_EQ(CMPI_ptr, 6400);
    EXPECT_EQ(CMPI_charsptr, 6656);
}

TEST(CmpiTypes, ArraysAddTheArrayBit) {
    EXPECT_EQ(CMPI_ARRAY, 8192);
    EXPECT_EQ(CMPI_booleanA, 8194);
    EXPECT_EQ(CMPI_uint32A, 8352);
    EXPECT_EQ(CMPI_stringA, 13824);
    EXPECT_EQ(CMPI_charsA, 14080);
    EXPECT_EQ(CMPI_refA, 12544);
}

TEST(CmpiTypes, ValueStatesAndResultCodesHaveTheirNumbers) {
    EXPECT_EQ(CMPI_goodValue, 0);
    EXPECT_EQ(CMPI_nullValue, 256);
    EXPECT_EQ(CMPI_keyValue, 512);
    EXPECT_EQ(CMPI_notFound, 1024);
    EXPECT_EQ(CMPI_badValue, 0x8000);
    EXPECT_EQ(CMPI_RC_OK, 0);
    EXPECT_EQ(CMPI_RC_ERR_FAILED, 1);
    EXPECT_EQ(CMPI_RC_ERR_NOT_FOUND, 6);
    EXPECT_EQ(CMPI_RC_ERR_NOT_SUPPORTED, 7);
    EXPECT_EQ(CMPI_RC_ERR_METHOD_NOT_FOUND, 17);
    EXPECT_EQ(CMPI_RC_ERROR_SYSTEM, 100);
}

TEST(CmpiRecords, SizesOfTheScalars) {
    EXPECT_EQ(sizeof(CMPIBoolean), 1U);
    EXPECT_EQ(sizeof(CMPIChar16), 2U);
    EXPECT_EQ(sizeof(CMPIUint32), 4U);
    EXPECT_EQ(sizeof(CMPIUint64), 8U);
    EXPECT_EQ(sizeof(CMPIReal32), 4U);
    EXPECT_EQ(sizeof(CMPIReal64), 8U);
    EXPECT_EQ(sizeof(CMPIType), 2U);
    EXPECT_EQ(sizeof(CMPICount), 4U);
}

TEST(CmpiRecords, DataIs24BytesOn64BitAnd12On32Bit) {
    EXPECT_EQ(offsetof(CMPIData, type), 0U);
    EXPECT_EQ(offsetof(CMPIData, state), 2U);
    EXPECT_EQ(offsetof(CMPIData, value), IS64 ? 8U : 4U);
    EXPECT_EQ(sizeof(CMPIValue), IS64 ? 16U : 8U);
    EXPECT_EQ(sizeof(CMPIData), IS64 ? 24U : 12U);
}

TEST(CmpiRecords, StatusIs16BytesOn64BitAnd8On32Bit) {
    EXPECT_EQ(offsetof(CMPIStatus, rc), 0U);
    EXPECT_EQ(offsetof(CMPIStatus, msg), IS64 ? 8U : 4U);
    EXPECT_EQ(sizeof(CMPIStatus), IS64 ? 16U : 8U);
}

TEST(CmpiRecords, BrokerHasFivePointers) {
    using Table = CMPIBroker;
    expect_slots(0, {AT(hdl), AT(bft), AT(eft), AT(xft), AT(mft)}, sizeof(Table));
}

TEST(CmpiRecords, EveryObjectIsAHandleAndATable) {
    const std::size_t pair = IS64 ? 16 : 8;
    EXPECT_EQ(sizeof(CMPIContext), pair);
    EXPECT_EQ(sizeof(CMPIResult), pair);
    EXPECT_EQ(sizeof(CMPIString), pair);
    EXPECT_EQ(sizeof(CMPIArray), pair);
    EXPECT_EQ(sizeof(CMPIEnumeration), pair);
    EXPECT_EQ(sizeof(CMPIInstance), pair);
    EXPECT_EQ(sizeof(CMPIObjectPath), pair);
    EXPECT_EQ(sizeof(CMPIArgs), pair);
    EXPECT_EQ(sizeof(CMPIDateTime), pair);
    EXPECT_EQ(sizeof(CMPIInstanceMI), pair);
    EXPECT_EQ(sizeof(CMPIAssociationMI), pair);
    EXPECT_EQ(offsetof(CMPIInstance, ft), pair / 2);
    EXPECT_EQ(offsetof(CMPIObjectPath, ft), pair / 2);
    EXPECT_EQ(offsetof(CMPIInstanceMI, ft), pair / 2);
    EXPECT_EQ(offsetof(CMPIAssociationMI, ft), pair / 2);
}

TEST(CmpiTables, Broker) {
    using Table = CMPIBrokerFT;
    EXPECT_EQ(offsetof(Table, brokerCapabilities), 0U);
    EXPECT_EQ(offsetof(Table, brokerVersion), 4U);
    expect_slots(8, {AT(brokerName),          AT(prepareAttachThread),
                     AT(attachThread),        AT(detachThread),
                     AT(deliverIndication),   AT(enumerateInstanceNames),
                     AT(getInstance),         AT(createInstance),
                     AT(modifyInstance),      AT(deleteInstance),
                     AT(execQuery),           AT(enumerateInstances),
                     AT(associators),         AT(associatorNames),
                     AT(references),          AT(referenceNames),
                     AT(invokeMethod),        AT(setProperty),
                     AT(getProperty),         AT(enumerateInstancesFiltered),
                     AT(associatorsFiltered), AT(referencesFiltered)},
                 sizeof(Table));
}

TEST(CmpiTables, BrokerMakersOfObjects) {
    using Table = CMPIBrokerEncFT;
    expect_slots(0,
                 {AT(ftVersion),
                  AT(newInstance),
                  AT(newObjectPath),
                  AT(newArgs),
                  AT(newString),
                  AT(newArray),
                  AT(newDateTime),
                  AT(newDateTimeFromBinary),
                  AT(newDateTimeFromChars),
                  AT(newSelectExp),
                  AT(classPathIsA),
                  AT(toString),
                  AT(isOfType),
                  AT(getType),
                  AT(getMessage),
                  AT(logMessage),
                  AT(trace),
                  AT(newCMPIError),
                  AT(openMessageFile),
                  AT(closeMessageFile),
                  AT(getMessage2),
                  AT(newPropertyList),
                  AT(newStringCP),
                  AT(newEnumerationFilter)},
                 sizeof(Table));
}

TEST(CmpiTables, BrokerThreadsAndLocks) {
    using Table = CMPIBrokerExtFT;
    expect_slots(0, {AT(ftVersion),        AT(resolveFileName),  AT(newThread),         AT(joinThread),
                     AT(exitThread),       AT(cancelThread),     AT(threadSleep),       AT(threadOnce),
                     AT(createThreadKey),  AT(destroyThreadKey), AT(getThreadSpecific), AT(setThreadSpecific),
                     AT(newMutex),         AT(destroyMutex),     AT(lockMutex),         AT(unlockMutex),
                     AT(newCondition),     AT(destroyCondition), AT(condWait),          AT(timedCondWait),
                     AT(signalCondition),  AT(destroyMutex2),    AT(lockMutex2),        AT(unlockMutex2),
                     AT(destroyCondition2)},
                 sizeof(Table));
}

TEST(CmpiTables, BrokerMemory) {
    using Table = CMPIBrokerMemFT;
    expect_slots(0,
                 {AT(ftVersion), AT(mark), AT(release), AT(cmpiMalloc), AT(cmpiCalloc), AT(cmpiRealloc),
                  AT(cmpiStrDup), AT(cmpiFree), AT(freeInstance), AT(freeObjectPath), AT(freeArgs),
                  AT(freeString), AT(freeArray), AT(freeDateTime), AT(freeSelectExp), AT(freeChars)},
                 sizeof(Table));
}

TEST(CmpiTables, Context) {
    using Table = CMPIContextFT;
    expect_slots(0,
                 {AT(ftVersion), AT(release), AT(clone), AT(getEntry), AT(getEntryAt), AT(getEntryCount),
                  AT(addEntry)},
                 sizeof(Table));
}

TEST(CmpiTables, Result) {
    using Table = CMPIResultFT;
    expect_slots(0,
                 {AT(ftVersion), AT(release), AT(clone), AT(returnData), AT(returnInstance),
                  AT(returnObjectPath), AT(returnDone), AT(returnError)},
                 sizeof(Table));
}

TEST(CmpiTables, String) {
    using Table = CMPIStringFT;
    expect_slots(0, {AT(ftVersion), AT(release), AT(clone), AT(getCharPtr), AT(newCharsCP)}, sizeof(Table));
}

TEST(CmpiTables, Array) {
    using Table = CMPIArrayFT;
    expect_slots(0,
                 {AT(ftVersion), AT(release), AT(clone), AT(getSize), AT(getSimpleType), AT(getElementAt),
                  AT(setElementAt)},
                 sizeof(Table));
}

TEST(CmpiTables, Enumeration) {
    using Table = CMPIEnumerationFT;
    expect_slots(0, {AT(ftVersion), AT(release), AT(clone), AT(getNext), AT(hasNext), AT(toArray)},
                 sizeof(Table));
}

TEST(CmpiTables, Instance) {
    using Table = CMPIInstanceFT;
    expect_slots(0,
                 {AT(ftVersion), AT(release), AT(clone), AT(getProperty), AT(getPropertyAt),
                  AT(getPropertyCount), AT(setProperty), AT(getObjectPath), AT(setPropertyFilter),
                  AT(setObjectPath), AT(setPropertyWithOrigin)},
                 sizeof(Table));
}

TEST(CmpiTables, ObjectPath) {
    using Table = CMPIObjectPathFT;
    expect_slots(0,
                 {AT(ftVersion),
                  AT(release),
                  AT(clone),
                  AT(setNameSpace),
                  AT(getNameSpace),
                  AT(setHostname),
                  AT(getHostname),
                  AT(setClassName),
                  AT(getClassName),
                  AT(addKey),
                  AT(getKey),
                  AT(getKeyAt),
                  AT(getKeyCount),
                  AT(setNameSpaceFromObjectPath),
                  AT(setHostAndNameSpaceFromObjectPath),
                  AT(getClassQualifier),
                  AT(getPropertyQualifier),
                  AT(getMethodQualifier),
                  AT(getParameterQualifier),
                  AT(toString)},
                 sizeof(Table));
}

TEST(CmpiTables, Args) {
    using Table = CMPIArgsFT;
    expect_slots(
        0, {AT(ftVersion), AT(release), AT(clone), AT(addArg), AT(getArg), AT(getArgAt), AT(getArgCount)},
        sizeof(Table));
}

TEST(CmpiTables, DateTime) {
    using Table = CMPIDateTimeFT;
    expect_slots(
        0, {AT(ftVersion), AT(release), AT(clone), AT(getBinaryFormat), AT(getStringFormat), AT(isInterval)},
        sizeof(Table));
}

TEST(CmpiTables, SelectExpression) {
    using Table = CMPISelectExpFT;
    expect_slots(0,
                 {AT(ftVersion), AT(release), AT(clone), AT(evaluate), AT(getString), AT(getDOC), AT(getCOD),
                  AT(evaluateUsingAccessor)},
                 sizeof(Table));
}

TEST(CmpiTables, InstanceInterface) {
    using Table = CMPIInstanceMIFT;
    EXPECT_EQ(offsetof(Table, ftVersion), 0U);
    EXPECT_EQ(offsetof(Table, miVersion), 4U);
    expect_slots(8,
                 {AT(miName), AT(cleanup), AT(enumerateInstanceNames), AT(enumerateInstances),
                  AT(getInstance), AT(createInstance), AT(modifyInstance), AT(deleteInstance), AT(execQuery),
                  AT(enumerateInstancesFiltered)},
                 sizeof(Table));
}

TEST(CmpiTables, AssociationInterface) {
    using Table = CMPIAssociationMIFT;
    EXPECT_EQ(offsetof(Table, ftVersion), 0U);
    EXPECT_EQ(offsetof(Table, miVersion), 4U);
    expect_slots(8,
                 {AT(miName), AT(cleanup), AT(associators), AT(associatorNames), AT(references),
                  AT(referenceNames), AT(associatorsFiltered), AT(referencesFiltered)},
                 sizeof(Table));
}

} // namespace
