// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The options that the selection dialog keeps for the caller's layout though nothing reads them, and their bounds.

#include "tests/ui/fixture.h"

#include <cstring>
#include <string_view>

class KeptOptionsTest : public SelectionTest {
protected:
    /** Whether these bytes are anywhere in the dialog. */
    bool holds(std::string_view bytes) const
    {
        const std::string_view object(reinterpret_cast<const char*>(dialog.get()), sizeof *dialog);
        return object.find(bytes) != std::string_view::npos;
    }
    /** A text of exactly so many characters, with its terminator. */
    static std::string text(char letter, std::size_t length) { return std::string(length, letter) + '\0'; }

    template <class Number>
    static std::string bytesOf(const Number& number)
    {
        return {reinterpret_cast<const char*>(&number), sizeof number};
    }
};

TEST_F(KeptOptionsTest, HoldTheTextsUpToTheirBounds)
{
    struct Text {
        char* field;
        std::size_t size;
        std::size_t bound;
    };
    const Text texts[] = {{load.szReserved1, sizeof load.szReserved1, 259},
        {load.szReserved2, sizeof load.szReserved2, 259}, {load.szReserved3, sizeof load.szReserved3, 1023},
        {load.szReserved4, sizeof load.szReserved4, 1023}, {load.szReserved5, sizeof load.szReserved5, 1023},
        {load.szReserved6, sizeof load.szReserved6, 1023}, {load.szReserved7, sizeof load.szReserved7, 1023},
        {load.szReserved8, sizeof load.szReserved8, 1023}};
    char letter = 'A';
    for (const Text& given : texts)
        std::memset(given.field, letter++, given.size);
    setUp();
    letter = 'A';
    for (const Text& given : texts) {
        EXPECT_TRUE(holds(text(letter, given.bound))) << letter;
        EXPECT_FALSE(holds(std::string(given.bound + 1, letter))) << letter;
        ++letter;
    }
}

TEST_F(KeptOptionsTest, HoldTheNumbers)
{
    for (unsigned int i = 0; i < 4; ++i)
        load.nReserved1[i] = 0xA1B2C3D0u + i;
    load.nReserved2 = 0x1F2E3D4Cu;
    load.byReserved = 0x5A;
    qstrncpy(load.szReserved8, "after the byte", sizeof load.szReserved8);
    setUp();
    EXPECT_TRUE(holds(bytesOf(load.nReserved1)));
    EXPECT_TRUE(holds(bytesOf(load.nReserved2)));
    EXPECT_TRUE(holds("\x5A"
                      "after the byte"));
}

TEST_F(KeptOptionsTest, HoldTheReservedWordUntilAnotherIsGiven)
{
    dialog = std::make_unique<SelectCertDialog>();
    const auto holdsWord = [this](unsigned long long word) { return holds(bytesOf(word)); };
    tagINITOPT init = initOptions();
    init.ullReserved = 0x0123456789ABCDEFull;
    dialog->SetInitOption(&init, nullptr, nullptr);
    EXPECT_TRUE(holdsWord(0x0123456789ABCDEFull));
    init.ullReserved = 0;
    dialog->SetInitOption(&init, nullptr, nullptr);
    EXPECT_TRUE(holdsWord(0x0123456789ABCDEFull)) << "0 counts as not given";
    init.ullReserved = 0xFEDCBA9876543210ull;
    dialog->SetInitOption(&init, nullptr, nullptr);
    EXPECT_TRUE(holdsWord(0xFEDCBA9876543210ull));
    EXPECT_FALSE(holdsWord(0x0123456789ABCDEFull));
}

TEST_F(KeptOptionsTest, HoldTheExtrasWithTheirThreeBytes)
{
    extra = std::make_unique<tagEXTRAOPTION>();
    std::memset(extra->szData, 'Z', sizeof extra->szData);
    std::memcpy(extra->byReserved, "\xA1\xB2\xC3", 3);
    setUp();
    EXPECT_TRUE(holds(text('Z', 199999) + "\xA1\xB2\xC3"));
    extra->szData[0] = '\0';
    std::memcpy(extra->byReserved, "\x00\x01\x02", 3);
    setUpAgain();
    EXPECT_TRUE(holds(text('Z', 199999) + std::string("\x00\x01\x02", 3))) << "the text stays, the bytes do not";
}

TEST_F(KeptOptionsTest, CutTheLibraryFolderTo259Characters)
{
    dialog = std::make_unique<SelectCertDialog>();
    tagINITOPT init{};
    init.nLanguage = korean;
    std::memset(init.szLibraryFolder, 'f', sizeof init.szLibraryFolder);
    dialog->SetInitOption(&init, nullptr, nullptr);
    dialog->SetLibraryFolder(std::string(260, 'g'));
    dialog->InitSetControl();
    dialog->Initalize();
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_Initalize"), "CLP_Initalize 0 1 " + std::string(259, 'f'));
    EXPECT_TRUE(holds(text('g', 259)));
    EXPECT_FALSE(holds(std::string(260, 'g')));
}
