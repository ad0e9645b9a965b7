#include "common/inifile.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string_view>
#include <type_traits>

namespace {

using namespace std::string_view_literals;

// Every case runs on both character types; test texts are ASCII.
template <class File>
class IniFileTest : public testing::Test {
  public:
    using String = typename File::String;
    using Char = typename String::value_type;
    using Merge = ini::MergeT<Char>;

    static String T(std::string_view text) { return String(text.begin(), text.end()); }
    static std::string N(const String& text) { return std::string(text.begin(), text.end()); }

    static void Load(File& file, std::string_view text, bool merge = false) {
        std::basic_istringstream<Char> in(T(text));
        file.Load(in, merge);
    }
    static std::string Saved(File& file) {
        std::basic_ostringstream<Char> out;
        out << file;
        return N(out.str());
    }
    // As Save() writes it, with the free lines in angle brackets after the keys.
    static std::string Dump(const File& file) {
        std::string text;
        for (const auto* const section : file.GetSections()) {
            text.append("[").append(N(section->GetSectionName())).append("]");
            for (const auto* const key : section->GetKeys()) {
                text += N(key->GetKeyName()) + "=" + N(key->GetValue()) + ";";
            }
            for (const String& line : section->GetLines()) {
                text.append("<").append(N(line)).append(">");
            }
        }
        return text;
    }
};

using Variants = testing::Types<CIniFileW, CIniFileA>;
TYPED_TEST_SUITE(IniFileTest, Variants);

static_assert(std::is_same_v<decltype(CIniFileW().GetSections()),
                             const std::set<CIniFileW::CIniSectionW*, CIniFileW::ci_less_w>&>);
static_assert(std::is_same_v<decltype(CIniFileA::CIniSectionA(nullptr, "").GetKey("")),
                             CIniFileA::CIniSectionA::CIniKeyA*>);

TYPED_TEST(IniFileTest, ReadsLines) {
    const struct {
        const char* name;
        std::string_view text;
        std::string_view dump;
    } cases[] = {
        {"sections are one in any case, the first name stays", "[General]\nA=1\n[gENERAL]\nB=2\n",
         "[General]A=1;B=2;"},
        {"sections sort without regard to case", "[Z]\n[a]\n[M]\n", "[a][M][Z]"},
        {"the last value of a key wins", "[s]\nKey=A\nkey=B", "[s]Key=B;"},
        {"only the first = divides", "[s]\n a\t = b=c \r\n", "[s]a= b=c ;"},
        {"a comment with = is a key", "[s]\n#Port=5\n# note\n#\n", "[s]#Port=5;"},
        {"free lines", "[s]\ntext\n=x\n", "[s]<text><=x>"},
        {"blank before, not behind", "[s]\n \t text \t\r\n", "[s]<text \t>"},
        {"outside any section", "a=1\ntext\n[s]\n", "[s]"},
        {"list sections take every line but comments",
         "[Dll extensions]\nlib1.so\nname=lib2.so\n#x\n#y=1\n",
         "[Dll extensions]<lib1.so><name=lib2.so><#y=1>"},
        {"list sections count letter case", "[dll Extensions]\nname=lib2.so\nlib1.so\n",
         "[dll Extensions]name=lib2.so;<lib1.so>"},
        {"the list section's first spelling decides", "[custom cdp list]\n[Custom CDP list]\na=b\n",
         "[custom cdp list]a=b;"},
        {"blanks behind a header keep its bracket", "[s] \n[s]\n[t]\t\t\r\n", "[s][s]][t]]"},
        {"blanks inside a header go", "[ s ]\n", "[s]"},
        {"shortest headers", "[]\na=1\n[\n", "[]a=1;<[>"},
        {"not closed", "[s]\n[s\n[t]x\n", "[s]<[s><[t]x>"},
        {"a header may hold =", "[a=b]\n", "[a=b]"},
        {"blank lines", "[s]\n\n \t\r\n\r\n\ra\n", "[s]<\ra>"},
        {"a NUL ends no line", "[s]\na=1\0002\nb=3\n"sv, "[s]a=1\0002;b=3;"sv},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TypeParam file;
        this->Load(file, c.text);
        EXPECT_EQ(this->Dump(file), c.dump);
    }
}

TYPED_TEST(IniFileTest, SavesKeysButNoFreeLines) {
    TypeParam file;
    this->Load(file, "[Z]\nb=2  \nA=1\nfree\n[a]\n");
    EXPECT_EQ(this->Saved(file), "[a]\n[Z]\nA=1\nb=2  \n");
}

TYPED_TEST(IniFileTest, MergesOnlyWhenAsked) {
    TypeParam file;
    this->Load(file, "[s]\na=1\nb=2\n");
    std::basic_istringstream<typename TestFixture::Char> more(this->T("[S]\nB=3\n[t]\n"));
    more >> typename TestFixture::Merge(file);
    EXPECT_EQ(this->Dump(file), "[s]a=1;b=3;[t]");

    std::basic_istringstream<typename TestFixture::Char> fresh(this->T("[u]\n"));
    fresh >> file;
    EXPECT_EQ(this->Dump(file), "[u]");
}

TYPED_TEST(IniFileTest, EditsByName) {
    TypeParam file;
    file.SetKeyValue(this->T(" s\t"), this->T(" k "), this->T(" v "));
    EXPECT_EQ(this->Dump(file), "[s]k= v ;");
    EXPECT_EQ(file.GetKeyValue(this->T("S"), this->T("K")), this->T(" v "));
    EXPECT_EQ(file.GetKeyValue(this->T("S"), this->T("x")), this->T(""));
    EXPECT_EQ(file.GetKeyValue(this->T("x"), this->T("K")), this->T(""));
    EXPECT_EQ(file.GetSection(this->T("x")), nullptr);
    auto* const section = file.AddSection(this->T("S"));
    EXPECT_EQ(section, file.GetSection(this->T("s")));
    EXPECT_EQ(section->AddKey(this->T("K ")), section->GetKey(this->T("k")));
}

TYPED_TEST(IniFileTest, RenamesToTheRightPlace) {
    TypeParam file;
    this->Load(file, "[a]\nx=1\ny=2\n[m]\n");
    EXPECT_TRUE(file.RenameSection(this->T(" A\t"), this->T(" z ")));
    EXPECT_TRUE(file.RenameKey(this->T("\tz "), this->T(" x\t"), this->T("\tzz")));
    EXPECT_TRUE(file.GetSection(this->T("m"))->SetSectionName(this->T("M")));
    EXPECT_EQ(this->Dump(file), "[M][z]y=2;zz=1;");
    EXPECT_NE(file.GetSection(this->T("Z")), nullptr);

    EXPECT_FALSE(file.RenameSection(this->T("z"), this->T("m")));
    EXPECT_FALSE(file.RenameSection(this->T("none"), this->T("b")));
    EXPECT_FALSE(file.RenameKey(this->T("z"), this->T("ZZ"), this->T("Y")));
    EXPECT_FALSE(file.RenameKey(this->T("none"), this->T("y"), this->T("b")));
    EXPECT_FALSE(file.GetSection(this->T("z"))->GetKey(this->T("y"))->SetKeyName(this->T("ZZ")));
    EXPECT_EQ(this->Dump(file), "[M][z]y=2;zz=1;");
}

TYPED_TEST(IniFileTest, RemovesOnlyWhatItOwns) {
    TypeParam file;
    TypeParam other;
    this->Load(file, "[a]\nx=1\ny=2\n[b]\n");
    this->Load(other, "[a]\nx=3\n");
    file.RemoveSection(other.GetSection(this->T("a")));
    file.RemoveSection(nullptr);
    file.GetSection(this->T("a"))->RemoveKey(other.GetSection(this->T("a"))->GetKey(this->T("x")));
    EXPECT_EQ(this->Dump(file), "[a]x=1;y=2;[b]");

    auto* const section = file.GetSection(this->T("a"));
    section->RemoveKey(section->GetKey(this->T("x")));
    file.RemoveSection(file.GetSection(this->T("b")));
    EXPECT_EQ(this->Dump(file), "[a]y=2;");
    section->RemoveAllKeys();
    EXPECT_EQ(this->Dump(file), "[a]");
    file.RemoveAllSections();
    EXPECT_EQ(this->Dump(file), "");
}

TYPED_TEST(IniFileTest, LoadsFilesAndTellsMissingOnes) {
    const TemporaryDir directory;
    TypeParam file;
    EXPECT_TRUE(file.Load(this->T(directory.Write("a.ini", "[s]\r\na=1\r\n")), /*merge=*/false));
    EXPECT_FALSE(file.Load(this->T(directory.File("none.ini")), /*merge=*/false));
    EXPECT_EQ(this->Dump(file), "[s]a=1;");
}

TYPED_TEST(IniFileTest, TrimsGivenCharacters) {
    auto left = this->T("xxayx");
    LTrim(left, this->T("xy"));
    EXPECT_EQ(left, this->T("ayx"));
    RTrim(left, this->T("xy"));
    EXPECT_EQ(left, this->T("a"));
    auto all = this->T("yxy");
    LTrim(all, this->T("xy"));
    EXPECT_EQ(all, this->T(""));
    auto both = this->T("xaxby");
    Trim(both, this->T("xy"));
    EXPECT_EQ(both, this->T("axb"));
}

}  // namespace
