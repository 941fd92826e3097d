// Images of the printer's settings and memory: what they contain, page by page, and what they never do.
#include "tests/unit/printer/asked_printer.h"

namespace virtual_printer {
namespace {

using Lines = std::vector<std::string>;

class PrinterImages : public AskedPrinter
{
protected:
    Lines backup(const std::string& page) { return linesIn(dataOf("getBCKP", {"0000", page})); }
    Lines memoryImage() { return linesIn(dataOf("getRAMMP", {"0000"})); }
};

// As the documentation lists them.
const Lines standardImage = {"VAT A=23 %",
                             "VAT B=19 %",
                             "VAT C=5 %",
                             "VAT D=0 %",
                             "Payment 1=Hotovost, at least 0.01, gives change",
                             "Payment 2=Karta, at least 0.01",
                             "Payment 3=Stravn\xE9 l\xEDstky, at least 0.01",
                             "Payment 4=Poukaz, at least 0.01",
                             "Payment 5=Cudzia mena, at least 0.01, gives change",
                             "Columns=40"};

TEST_F(PrinterImages, OfABackupHaveTheSettingsAndPictures)
{
    pictures[3] = {.width = 96, .height = 32, .dots = std::vector<bool>(3072)};
    keepDay(1, "2026-01-01", 100);
    Lines expected = standardImage;
    expected.emplace_back("Picture 3=96 x 32");
    EXPECT_EQ(backup("0"), expected);
}

TEST_F(PrinterImages, OfABackupAreThoseOfTheLastClosure)
{
    keepDay(1, "2026-01-01", 100);
    commit();
    settings.columns = 32;
    EXPECT_EQ(backup("0"), standardImage);
    EXPECT_EQ(memoryImage().at(standardImage.size() - 1), "Columns=32");
}

TEST_F(PrinterImages, OfABackupAreRefusedBeforeTheFirstClosure)
{
    EXPECT_EQ(refusalOf("getBCKP", {"0000", "0"}), Refusal::nothingToRestore);
}

TEST_F(PrinterImages, OfABackupAreWhatIsRestored)
{
    pictures[3] = {.width = 96, .height = 32, .dots = std::vector<bool>(3072)};
    standing.closures = 1;
    keepDay(1, "2026-01-01", 100);
    commit();
    const Pictures backedUp = pictures;
    pictures.clear();
    settings.columns = 32;
    EXPECT_EQ(refusalOf("restoreBCKP", {"0000"}), Refusal::none);
    EXPECT_EQ(asked().state().settings->columns, 40);
    EXPECT_EQ(*asked().state().pictures, backedUp);
    EXPECT_EQ(asked().memory().load()->settings->columns, 40);
    EXPECT_EQ(*asked().memory().load()->pictures, backedUp);
}

TEST_F(PrinterImages, OfABackupAreNotThereToRestoreBeforeTheFirstClosure)
{
    settings.columns = 32;
    EXPECT_EQ(refusalOf("restoreBCKP", {"0000"}), Refusal::nothingToRestore);
    EXPECT_EQ(asked().state().settings->columns, 32);
}

TEST_F(PrinterImages, HaveEverySetting)
{
    settings.euroExchangeRate = 300126;
    settings.header = {{1, "Potraviny"}, {3, "Hlavna 1"}};
    settings.additionalHeader = "Vitajte";
    settings.additionalFooter = "Dovidenia";
    settings.superFooter = "Koniec";
    settings.prelines = {"pred", "este pred"};
    settings.postlines = {"po"};
    settings.parameters = {{7, 1}};
    settings.printerParameters = {{2, 30}};
    settings.others = {{"Mail address", "a@b.sk"}};
    Lines expected(standardImage.begin(), standardImage.end() - 1);
    for (const std::string line :
         {"Euro exchange rate=30.0126", "Header 1=Potraviny", "Header 3=Hlavna 1",
          "Additional header=Vitajte", "Additional footer=Dovidenia", "Super footer=Koniec", "Preline 1=pred",
          "Preline 2=este pred", "Postline 1=po", "Parameter 7=1", "Printer parameter 2=30",
          "Mail address=a@b.sk", "Columns=40"}) {
        expected.push_back(line);
    }
    Lines image = memoryImage();
    image.resize(expected.size());
    EXPECT_EQ(image, expected);
}

// A text is a value and cannot be another line.
TEST_F(PrinterImages, HaveTextsWithoutControlCharacters)
{
    settings.header = {{1, "a\r\nColumns=99"}};
    settings.others = {{"Mail address", "a\x1B[2J@b.sk"}};
    Lines expected(standardImage.begin(), standardImage.end() - 1);
    for (const std::string line : {"Header 1=a  Columns=99", "Mail address=a [2J@b.sk", "Columns=40"}) {
        expected.push_back(line);
    }
    keepDay(1, "2026-01-01", 100);
    EXPECT_EQ(backup("0"), expected);
    Lines image = memoryImage();
    image.resize(expected.size());
    EXPECT_EQ(image, expected);
}

TEST_F(PrinterImages, OfTheMemoryHaveTheStandingBehindTheSettings)
{
    standing.dayIsOpen = true;
    standing.dayBegan = at("2026-01-02 07:00");
    standing.lastDocument = at("2026-01-02 07:30");
    standing.day.byVat = {{'A', 1250}};
    standing.day.byPayment = {{1, 1000}, {2, 250}};
    standing.day.receipts = 2;
    standing.day.cancelled = 1;
    standing.ever.returns = 300;
    standing.drawer = {{1, 4000}};
    standing.receipts = 9;
    standing.closures = 3;
    standing.documents = 13;
    standing.clockOffset = std::chrono::seconds(-60);
    now = "2026-01-02 08:00";
    Lines expected = standardImage;
    for (const std::string line : {"Life=fiscal",
                                   "Registration code=88812345678900001",
                                   "Selling day=since 2026-01-02 07:00:00",
                                   "Last document=2026-01-02 07:30:00",
                                   "Sale mode=0",
                                   "Day VAT A=12.50",
                                   "Day payment 1=10.00",
                                   "Day payment 2=2.50",
                                   "Day receipts=2",
                                   "Day cancelled receipts=1",
                                   "Day discounts=0.00",
                                   "Day returns=0.00",
                                   "Day drawer movements=0",
                                   "Ever receipts=0",
                                   "Ever cancelled receipts=0",
                                   "Ever discounts=0.00",
                                   "Ever returns=3.00",
                                   "Ever drawer movements=0",
                                   "Drawer 1=40.00",
                                   "Last receipt=9",
                                   "Last closure=3",
                                   "Documents=13",
                                   "Clock offset=-60 s"}) {
        expected.push_back(line);
    }
    EXPECT_EQ(memoryImage(), expected);
}

TEST_F(PrinterImages, OfABackupComeInPagesOfTwentyLines)
{
    for (int row = 1; row <= 10; ++row) {
        settings.header[row] = "row " + std::to_string(row);
        settings.parameters[row] = row;
    }
    keepDay(1, "2026-01-01", 100); // 30 lines
    const Lines whole = backup("0");
    ASSERT_EQ(whole.size(), 30U);
    EXPECT_EQ(backup("1"), Lines(whole.begin(), whole.begin() + 20));
    EXPECT_EQ(backup("2"), Lines(whole.begin() + 20, whole.end()));
    EXPECT_EQ(dataOf("getBCKP", {"0000", "3"}), "");
    EXPECT_EQ(dataOf("getBCKP", {"0000", "2147483647"}), "");
    EXPECT_EQ(refusalOf("getBCKP", {"0000", "-1"}), Refusal::valueOutOfRange);
}

TEST_F(PrinterImages, NeverHavePasswords)
{
    settings.password = "geheim-1";
    settings.servicePassword = "geheim-2";
    keepDay(1, "2026-01-01", 100);
    EXPECT_EQ(dataOf("getBCKP", {"geheim-1", "0"}).find("geheim"), std::string::npos);
    EXPECT_EQ(dataOf("getRAMMP", {"geheim-1"}).find("geheim"), std::string::npos);
}

TEST_F(PrinterImages, WantThePassword)
{
    keepDay(1, "2026-01-01", 100);
    EXPECT_EQ(refusalOf("getBCKP", {"0001", "0"}), Refusal::wrongPassword);
    EXPECT_EQ(refusalOf("getRAMMP", {""}), Refusal::wrongPassword);
}

} // namespace
} // namespace virtual_printer
