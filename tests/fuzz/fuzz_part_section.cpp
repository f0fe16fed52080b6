// Reads objects from record text as a floor does: every "Part..." section
// through LoadFromSection and the grouper, the other sections as the head
// that gives the file version, unit and reader kind. The objects are then
// saved, read back and saved again; from the second save on the text must
// not change.

#include "CVxIniFileReader.h"
#include "CVxPart.h"
#include "CVxPartVectorGrouper.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "CVxUnits.h"
#include "IVxReadIniClient.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

CVxStringW VxFuzzTempFolder();

namespace {

// Bigger inputs only make each run slower.
constexpr size_t kMaxInput = 65536;
// Big tables cost time and teach the fuzzer nothing that small ones don't;
// the unit tests build the largest.
constexpr int64_t kTableCellBudget = 4096;

// The head of the text, and the path rule: every file that the objects name
// lies in the private folder, so that no input makes the loader open devices
// or the user's files.
class CVxFuzzHead : public IVxReadIniClient
{
public:
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override
    {
        if (key == "FileVersion")
            reader->SetProjectVersion(CVxIniFileReader::ToInt(value, 0));
        else if (key == "Unit")
            reader->SetUnit(CVxUnits::GetUnitEngTextIdx(CVxStringA(value)));
        else if (key == "Kind")
            reader->SetReaderKind(CVxIniFileReader::ToInt(value, 0) & 3);
    }
    bool OnPathTransformToAbsolute(CVxStringW& result, const CVxStringW& path, const CVxStringW&) override
    {
        const CVxStringW folder = VxFuzzTempFolder();
        if (path.StartsWith(folder) && path.Find(L"..") < 0) {
            result = path;
            return true;
        }
        CVxStringW name = path.Right(100);
        for (int i = 0; i < name.GetLength(); ++i)
            if (name[i] == L'/' || name[i] == L'\\' || name[i] == L'.')
                name.SetAt(i, L'_');
        result = folder + L"missing/" + name;
        return true;
    }
};

std::vector<CVxPart> Load(const CVxStringA& text, bool useHead)
{
    CVxStringReader reader(text, 65001);
    CVxFuzzHead head;
    reader.SetPathTransformer(&head);
    std::vector<CVxPart> parts;
    CVxPartVectorGrouper grouper(parts, kTableCellBudget);
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        if (reader.GetSectionName().StartsWith("Part")) {
            CVxPart part;
            part.LoadFromSection(&reader);
            grouper.Add(std::move(part), reader.GetProjectVersion() > 0 ? reader.GetProjectVersion() : 1020);
        } else {
            reader.ReadSection(useHead ? &head : nullptr);
        }
    }
    grouper.Finalize();
    return parts;
}

CVxStringA Save(const std::vector<CVxPart>& parts, bool forLibrary)
{
    CVxStringWriter writer;
    for (size_t i = 0; i < parts.size(); ++i) {
        CVxStringA section;
        section.sprintf("Part%d", static_cast<int>(i));
        parts[i].SaveToFile(&writer, section, forLibrary, nullptr);
    }
    return writer.GetString();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > kMaxInput)
        return 0;
    const CVxStringA text(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const std::vector<CVxPart> parts = Load(text, true);

    // Copies are deep and independent of their source.
    std::vector<CVxPart> copies = parts;
    for (CVxPart& part : copies) {
        part.SetPropertiesToSubParts();
        part.InvalidateCache();
        part.KeepAspect();
    }
    copies.clear();

    const bool forLibrary = size > 0 && (data[0] & 1) != 0;
    const CVxStringA first = Save(parts, forLibrary);
    const CVxStringA second = Save(Load(first, false), forLibrary);
    const CVxStringA third = Save(Load(second, false), forLibrary);
    if (second != third)
        abort();
    return 0;
}
