// Torture: a session in which the k-th toolkit call fails, for every k; then one in which the k-th memory allocation of
// the library fails. Never a crash, a byte string that is not given back or given back twice, or a code that is not
// stated.

#include "tests/certlist/scenario.h"
#include "tests/certlist/scripted.h"

#include <link.h>
#include <unwind.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <set>

namespace fs = std::filesystem;

namespace {

/** Which allocations to count, to look at and to refuse. Switched on around a session only. */
struct Allocations {
    bool counting = false;
    long made = 0;
    long refused = -1;                      ///< number of the allocation that fails
    std::vector<bool>* ofLibrary = nullptr; ///< filled when not null: false for those of the doubles
};
Allocations allocations;

bool insideDoubles(std::uintptr_t address)
{
    struct Search {
        std::uintptr_t address;
        bool found;
    } search{address, false};
    dl_iterate_phdr(
        [](dl_phdr_info* module, std::size_t, void* data) {
            auto* s = static_cast<Search*>(data);
            for (int i = 0; i < module->dlpi_phnum; ++i) {
                const auto& segment = module->dlpi_phdr[i];
                const std::uintptr_t start = module->dlpi_addr + segment.p_vaddr;
                if (segment.p_type == PT_LOAD && s->address >= start && s->address < start + segment.p_memsz)
                    s->found = std::strstr(module->dlpi_name, "libdoubles_record") ||
                        std::strstr(module->dlpi_name, "libHVCToolkitV30");
            }
            return 0;
        },
        &search);
    return search.found;
}

/** True when a frame of the recording toolkits is on the stack: toolkits are not written in C++ that may run dry. */
bool calledByDoubles()
{
    bool found = false;
    _Unwind_Backtrace(
        [](_Unwind_Context* context, void* data) {
            auto* result = static_cast<bool*>(data);
            *result = *result || insideDoubles(_Unwind_GetIP(context));
            return *result ? _URC_END_OF_STACK : _URC_NO_REASON;
        },
        &found);
    return found;
}

bool refuse()
{
    if (!allocations.counting)
        return false;
    allocations.counting = false; // what is done here allocates too
    // The doubles allocate a little differently from session to session, so the number alone could hit one of theirs:
    // the first allocation of the library from there on is refused.
    const bool due = allocations.refused >= 0 && allocations.made >= allocations.refused;
    const bool refused = due && !calledByDoubles();
    if (refused)
        allocations.refused = -1;
    if (allocations.ofLibrary)
        allocations.ofLibrary->push_back(!calledByDoubles());
    ++allocations.made;
    allocations.counting = true;
    return refused;
}

} // namespace

void* operator new(std::size_t size)
{
    void* memory = refuse() ? nullptr : std::malloc(size ? size : 1);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

constexpr int injected = 77;

/** Every code that a function of the boundary states, and the toolkit's own, which pass through. */
const std::set<int> stated{0, 1000, 1001, 1005, 1007, 1008, 1010, 1100, 1102, 1105, 1111, 1113, 1114, 1115, 1118,
    1119, 1120, 1122, 1123, 1124, 1125, 1126, 1127, 1128, 1129, 1130, 1131, 1132, injected, fake::fileError,
    fake::writeError};

class Torture : public Scripted {
protected:
    /** A store, settings and toolkit as new. */
    void renew()
    {
        fs::remove_all(home / "NPKI");
        fs::remove_all(home / "GPKI");
        addGpki("g");
        addKm(addNpki("n"));
        writeFile(library / "Issuer_KOR.conf", "[Info_count]\nIssuer_Info=1\n[Issuer_Info1]\ncn=a\nname=b\n");
        writeFile(library / "HVCToolkitV30.conf",
            "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1\n[CA_INFO1]\nCA_DN=cn=Root\nDIR_URL=ldap://x\n");
        writeFile(disk / "imported.pfx", fake::pfx(goodPassword, {fake::certificate()}, {fake::key()}));
        fake::install();
        fake::directory["ldap://x/cn=Root"] = "root";
        foreign = 0;
        doubles::answer("HVTK_BINSTR_Delete", [this](const doubles::Call& call) {
            const int rc = doubles::release(call.pointer<BINSTR>(0));
            foreign += rc == doubles::foreignByteString ? 1 : 0;
            return rc;
        });
    }
    void expectStated(const Codes& codes, long k)
    {
        for (std::size_t i = 0; i < codes.count; ++i)
            EXPECT_TRUE(stated.count(codes.code[i])) << codes.code[i] << " of step " << i << " for k = " << k;
    }

    SessionTexts texts{library, disk};
    int foreign = 0;
};

TEST_F(Torture, SessionWithoutAFailure)
{
    renew();
    const Codes codes = runSession(texts);
    for (std::size_t i = 0; i < codes.count; ++i)
        EXPECT_EQ(codes.code[i], 0) << "step " << i;
    EXPECT_EQ(doubles::liveByteStrings(), 0);
    EXPECT_EQ(foreign, 0);
}

TEST_F(Torture, EveryToolkitCallFailsOnce)
{
    renew();
    runSession(texts);
    const int calls = static_cast<int>(doubles::calls().size());
    for (int k = 1; k <= calls; ++k) {
        renew();
        bool releaseRefused = false;
        doubles::interpose([&](int n, const std::string& symbol) {
            releaseRefused = releaseRefused || (n == k && symbol == "HVTK_BINSTR_Delete");
            return n == k ? injected : 0;
        });
        expectStated(runSession(texts), k);
        EXPECT_EQ(doubles::liveByteStrings(), releaseRefused ? 1 : 0) << "k = " << k;
        EXPECT_EQ(foreign, 0) << "k = " << k;
    }
    RecordProperty("toolkit_calls", calls);
    std::printf("every one of %d toolkit calls failed once\n", calls);
}

TEST_F(Torture, EveryAllocationFailsOnce)
{
    renew();
    std::vector<bool> ofLibrary;
    ofLibrary.reserve(1 << 20);
    allocations = {true, 0, -1, &ofLibrary};
    runSession(texts);
    allocations.counting = false;
    int failed = 0;
    for (std::size_t k = 0; k < ofLibrary.size(); ++k) {
        if (!ofLibrary[k])
            continue;
        renew();
        allocations = {true, 0, static_cast<long>(k), nullptr};
        const Codes codes = runSession(texts);
        allocations.counting = false;
        expectStated(codes, static_cast<long>(k));
        EXPECT_EQ(doubles::liveByteStrings(), 0) << "k = " << k;
        EXPECT_EQ(foreign, 0) << "k = " << k;
        ++failed;
    }
    EXPECT_GT(failed, 100);
    RecordProperty("allocations", failed);
    std::printf("every one of %d allocations failed once\n", failed);
}

} // namespace
