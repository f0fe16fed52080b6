#include "CVxPartPayload.h"

#include "CVxDozamoWardrobePayload.h"
#include "CVxStairsPayload.h"

#include <vector>

namespace {
struct SVxPayloadClass
{
    CVxStringW name;
    int libraryNumber;
    CVxPartPayload::Creator creator;
};

std::vector<SVxPayloadClass>& Registry()
{
    static std::vector<SVxPayloadClass> classes;
    return classes;
}
} // namespace

CVxStringW CVxPartPayload::Serialize() const
{
    return GetClassName() + L":" + SaveToString();
}

void CVxPartPayload::RegisterBuiltinClasses()
{
    RegisterClass(CVxStairsPayload::ClassName(), CVxStairsPayload::libraryNumber,
                  [] { return new CVxStairsPayload(); });
    RegisterClass(CVxBanisterStairsPayload::ClassName(), CVxBanisterStairsPayload::libraryNumber,
                  [] { return new CVxBanisterStairsPayload(); });
    RegisterClass(CVxDozamoWardrobePayload::ClassName(), CVxDozamoWardrobePayload::libraryNumber,
                  [] { return new CVxDozamoWardrobePayload(); });
}

void CVxPartPayload::RegisterClass(const CVxStringW& name, int libraryNumber, Creator creator)
{
    for (const SVxPayloadClass& entry : Registry())
        if (entry.name == name)
            return;
    Registry().push_back({name, libraryNumber, std::move(creator)});
}

void CVxPartPayload::UnregisterClass(const CVxStringW& name)
{
    std::vector<SVxPayloadClass>& classes = Registry();
    for (auto it = classes.begin(); it != classes.end(); ++it) {
        if (it->name == name) {
            classes.erase(it);
            return;
        }
    }
}

CVxPartPayload* CVxPartPayload::CreateNew(int libraryNumber)
{
    for (const SVxPayloadClass& entry : Registry())
        if (entry.libraryNumber == libraryNumber && entry.creator)
            return entry.creator();
    return nullptr;
}

CVxPartPayload* CVxPartPayload::CreateFromString(const CVxStringW& text)
{
    if (text.IsEmpty())
        return nullptr;
    const int colon = text.Find(L':');
    const CVxStringW name = colon < 0 ? text : text.Left(colon);
    const CVxStringW rest = colon < 0 ? CVxStringW() : text.Mid(colon + 1);
    for (const SVxPayloadClass& entry : Registry()) {
        if (entry.name != name || !entry.creator)
            continue;
        CVxPartPayload* payload = entry.creator();
        if (payload && !rest.IsEmpty() && !payload->LoadFromString(rest)) {
            delete payload;
            return nullptr;
        }
        return payload;
    }
    return nullptr;
}
