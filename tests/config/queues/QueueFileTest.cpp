#include <gtest/gtest.h>

#include <filesystem>

#include "base/Utf16.h"
#include "files/FileLookup.h"
#include "tests/config/ServiceFolder.h"

namespace pellorin::test {
namespace {

namespace fs = std::filesystem;
using std::string_literals::operator""s;

Section& AddQueue(Ini& document, const std::string& name) {
  Section& queue = document.Add(name, SectionType::Queue);
  queue.Load();
  return queue;
}

// A folder with one queue.
struct Night : ServiceFolder {
  explicit Night(const std::string& bytes, const std::string& fileName = "Night.xml")
      : document(LoadedWith(bytes, fileName)) {}
  std::unique_ptr<Ini> LoadedWith(const std::string& bytes, const std::string& fileName = "Night.xml") const {
    WriteQueue(fileName, bytes);
    return Loaded();
  }

  std::unique_ptr<Ini> document;
  Section& queue = *document->GetSection("Night");
  const std::string path = QueuePath("Night.xml");
};

std::string Utf16(const std::string& text, bool littleEndian) {
  std::string bytes = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
  for (const char16_t unit : ToUtf16(text)) {
    const std::string low(1, static_cast<char>(unit & 0xFF)), high(1, static_cast<char>(unit >> 8));
    bytes += littleEndian ? low + high : high + low;
  }
  return bytes;
}

TEST(QueueFile, ANewQueueStartsFromTheTemplateAndIsWrittenOnceItDiffers) {
  const Store store;
  Section& queue = AddQueue(*store, "Night");
  EXPECT_EQ(Shown(queue), "3Night{frequency=daily;every=1;days=;}");
  EXPECT_TRUE(queue.IsOriginal());
  store->Save();
  EXPECT_FALSE(store.HasQueue("Night.xml"));
  SetValues(queue, "every=2;startdate=<&\"'>\t\r\n\u2603");
  store->Save();
  EXPECT_EQ(store.Queue("Night.xml"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- new queues start here -->\n"
            "<queue frequency=\"daily\" every=\"2\" days=\"\" "
            "startdate=\"&lt;&amp;&quot;'&gt;&#9;&#13;&#10;\u2603\"/>\n");
  EXPECT_EQ(store.Read(kTemplateName), kTemplate);
  const std::string reloaded = Shown(*store.Loaded());
  EXPECT_TRUE(reloaded.ends_with("\n3Night{frequency=daily;every=2;days=;startdate=<&\"'>\t\r\n\u2603;}\n"));
}

// Each file is loaded, "every" becomes "2" and "added" a snowman.
TEST(QueueFile, SavingKeepsWhateverElseTheFileHolds) {
  const std::string utf8 = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
  const std::string ansi = "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n";
  const std::string marked = "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
  const std::string start = "\n<?style a?>\n<!-- b -->\n<all z=\"1\">\n  text &lt; <b/>\n  <queue every=";
  const std::string end = "</c></queue>\n  <queue/>\n</all>\n<!-- end -->\n";
  std::vector<std::pair<std::string, std::string>> rows = {
      {"<?xml version=\"1.0\"?>" + start + "\"1\"><!-- in --><c d=\"&#233;\">t" + end,
       utf8 + start + "\"2\" z=\"1\" d=\"\u00E9\" added=\"\u2603\"><!-- in --><c d=\"\u00E9\">t" + end},
      {"<!DOCTYPE queue [<!ENTITY n \"night\">]>\n<queue every=\"1\" a=\"&n;\"><![CDATA[<]]>&n;</queue>\n",
       "<!DOCTYPE queue [\n<!ENTITY n \"night\">\n]>\n<queue every=\"2\" a=\"&n;\" added=\"\u2603\">"
       "<![CDATA[<]]>&n;</queue>\n"},
      {marked + "<queue every=\"1\"/>\n", marked + "<queue every=\"2\" added=\"\u2603\"/>\n"},
      {utf8 + "\r\n<!-- a\r\nb -->\r\n<queue every=\"1\"/>\r\n",
       utf8 + "\r\n<!-- a\r\nb -->\r\n<queue every=\"2\" added=\"\u2603\"/>\r\n"},
      {ansi + "<queue every=\"1\" n=\"\x80\xE4\"/>\n",
       ansi + "<queue every=\"2\" n=\"\x80\xE4\" added=\"&#9731;\"/>\n"},
      {"<all xmlns:p=\"p\" p:added=\"\" every=\"1\"><queue every=\"1\" xml:lang=\"de\" added=\"\"/></all>\n",
       "<all xmlns:p=\"p\" p:added=\"\u2603\" every=\"2\"><queue every=\"2\" xml:lang=\"de\" "
       "added=\"\u2603\" "
       "lang=\"de\"/></all>\n"}};
  for (const bool littleEndian : {true, false})
    for (const std::string head : {"", "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n"})
      rows.emplace_back(
          Utf16(head + "<!-- x -->\r\n<queue every=\"1\"/>\r\n", littleEndian),
          Utf16(head + "<!-- x -->\r\n<queue every=\"2\" added=\"\u2603\"/>\r\n", littleEndian));
  for (const auto& [before, after] : rows) {
    SCOPED_TRACE(before);
    const Night night(before);
    EXPECT_EQ(night.queue.QueueProblem(), "");
    SetValues(night.queue, "every=2;added=\u2603");
    night.document->Save();
    EXPECT_EQ(night.Queue("Night.xml"), after);
    const auto reloaded = night.Loaded();
    for (const auto& setting : reloaded->GetSection("Night")->Settings())
      EXPECT_EQ(setting->Value, night.queue.GetValue(setting->Name)) << setting->Name << " loaded again";
  }
}

TEST(QueueFile, ValuesThatWouldNotComeBackAreRefused) {
  const std::string utf8 = "<queue every=\"1\"/>";
  const std::string noXml = "The value of every holds a character that XML cannot express.";
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {utf8, "a\x01", noXml},
      {utf8, "a\0b"s, noXml},
      {utf8, "\xFF", noXml},
      {utf8, "\uFFFF", noXml},
      {"<?xml version=\"1.0\" encoding=\"UTF-7\"?>\n" + utf8, "\u4E2D~+",
       "What would be written does not load as the same settings (encoding UTF-7). Please save the file in "
       "UTF-8 with a text editor."},
  };
  for (const auto& [bytes, value, reason] : rows) {
    SCOPED_TRACE(value + " in " + bytes);
    const Night night(bytes);
    night.queue.SetValue("every", value);
    ExpectCannotSave(*night.document, "Night", reason, night.path);
    EXPECT_EQ(night.Queue("Night.xml"), bytes);
    EXPECT_TRUE(night.queue.HasChanges());
  }
}

TEST(QueueFile, AnUnusableFileIsAQueueWithoutSettingsThatIsNeverWritten) {
  const std::string noXml = "It is not well-formed XML: line ";
  const std::pair<std::string, std::string> rows[] = {
      {"", "It is empty."},
      {"<queue every=\"1\">\n<a></queue>", noXml + "2: "},
      {std::string(300, '\0'), noXml},
      {"<queue every=\"1\" every=\"2\"/>", noXml + "1: Attribute every redefined"},
      {"<queue every=\"\xFF\"/>", noXml},
      {"<Queue every=\"1\"/>", "It holds no element \"queue\"."},
  };
  for (const auto& [bytes, reason] : rows) {
    SCOPED_TRACE(bytes.substr(0, 50));
    const Night night(bytes);
    const std::string problem = night.queue.QueueProblem();
    EXPECT_TRUE(problem.starts_with(night.path + "\r\n" + reason)) << problem;
    EXPECT_EQ(Shown(night.queue),
              reason.find("queue") == std::string::npos ? "3Night{}?" : "3Night{every=1;}?");
    night.queue.SetValue("every", "2");
    ExpectCannotSave(*night.document, "Night", "Its definition could not be read: " + problem, night.path);
    EXPECT_EQ(night.Queue("Night.xml"), bytes);
    night.document->Delete("Night");
    night.document->Save();
    EXPECT_FALSE(night.HasQueue("Night.xml"));
  }
}

TEST(QueueFile, AFileNameThatNoInstanceCouldHoldMakesItUnusable) {
  const ServiceFolder folder;
  const std::string unreadableName = "\xDC" + "bung.xml"s;
  folder.WriteQueue(unreadableName, "<queue every=\"1\"/>");
  folder.WriteQueue("\u4E2D.xml", "<queue every=\"2\"/>");
  folder.WriteQueue("two\nlines.xml", "<queue every=\"3\"/>");
  folder.WriteQueue("\\xDC.xml", "<queue every=\"4\"/>");
  const auto document = folder.Loaded();
  EXPECT_EQ(Shown(*document),
            "2ADMIN:Pellorin{}\n3\\xDC{every=4;}\n3two\\x0Alines{}?\n3\\xDCbung{}?\n3\u4E2D{}?\n");
  Section& unreadable = document->Item(4);
  EXPECT_EQ(unreadable.QueueProblem(),
            folder.QueuePath("\\xDCbung.xml") + "\r\nIts name is not valid text. Please rename the file.");
  EXPECT_NE(document->Item(5).QueueProblem().find("(it is outside code page 1252)"), std::string::npos);
  EXPECT_NE(document->Item(3).QueueProblem().find("Its name holds a line break."), std::string::npos);
  document->Delete(unreadable);
  document->Save();
  EXPECT_FALSE(folder.HasQueue(unreadableName));
  EXPECT_TRUE(folder.HasQueue("\u4E2D.xml") && folder.HasQueue("\\xDC.xml"));
}

TEST(QueueFile, UnreadableFilesAreNamed) {
  const ServiceFolder folder;
  fs::create_directory(folder.QueuePath("folder.xml"));  // no file, so no queue
  folder.WriteQueue("huge.xml", "");
  fs::resize_file(folder.QueuePath("huge.xml"), kLargestFile + 1);
  const auto document = folder.Loaded();
  EXPECT_EQ(document->GetSection("folder"), nullptr);
  EXPECT_EQ(document->GetSection("huge")->QueueProblem(),
            folder.QueuePath("huge.xml") + "\r\nCannot read the file: it is larger than 16 MB");
  folder.Write(kTemplateName, "<queue");
  EXPECT_TRUE(AddQueue(*document, "A").QueueProblem().starts_with(folder / kTemplateName));
  fs::remove(folder / kTemplateName);
  Section& queue = AddQueue(*document, "B");
  EXPECT_EQ(queue.QueueProblem(), folder / kTemplateName + "\r\nCannot read the file: it does not exist");
  queue.SetValue("every", "1");
  EXPECT_NE(FailureOfSaving(*document), "no failure");
  EXPECT_FALSE(folder.HasQueue("B.xml"));
}

TEST(QueueFile, FilesAreFoundInAnyLetterCase) {
  const ServiceFolder folder;
  fs::rename(folder / "QUEUEDefinitions", folder / "QueueDefinitions");
  fs::rename(folder / "QueueDefinitions/defaultQUEUE.xml", folder / "QueueDefinitions/other.txt");
  folder.Write("QueueDefinitions/DefaultQueue.XML", "<queue every=\"9\"/>");
  folder.Write("QueueDefinitions/Night.XML", "<queue every=\"1\"/>");
  folder.Write("QueueDefinitions/.Night.xml.0123.tmp", "<queue every=\"1\"/>");
  folder.Write("QueueDefinitions/b.XML.old.xml", "<queue every=\"2\"/>");
  folder.Write("QueueDefinitions/\u212A.xml", "<queue every=\"4\"/>");  // a Kelvin sign, folded shorter
  const auto document = folder.Loaded();
  EXPECT_EQ(Shown(*document), "2ADMIN:Pellorin{}\n3b.old.xml{every=2;}\n3\u212A{}?\n3Night{every=1;}\n");
  document->GetSection("Night")->SetValue("every", "2");
  EXPECT_EQ(Shown(AddQueue(*document, "new")), "3new{every=9;}");
  document->Save();
  EXPECT_EQ(folder.Read("QueueDefinitions/Night.XML"), "<queue every=\"2\"/>\n");
  EXPECT_FALSE(folder.Has("QueueDefinitions/Night.xml"));
  document->Delete("Night");
  document->Save();
  EXPECT_FALSE(folder.Has("QueueDefinitions/Night.XML"));
  EXPECT_EQ(folder.Read("QueueDefinitions/DefaultQueue.XML"), "<queue every=\"9\"/>") << "the template";
  // Beside the exact name, or another spelling, it is a queue.
  for (const char* name : {"defaultQUEUE.xml", "DEFAULTQUEUE.XML"}) {
    folder.Write("QueueDefinitions/" + std::string(name), "<queue every=\"8\"/>");
    EXPECT_NE(folder.Loaded()->GetSection("DefaultQueue"), nullptr) << name;
    fs::remove(folder / "QueueDefinitions/" + name);
  }
}

TEST(QueueFile, NothingIsWrittenOutsideTheFolder) {
  const ServiceFolder folder;
  fs::create_directory(folder.QueuePath("a"));
  folder.Write("x.xml", "<queue every=\"5\"/>");
  for (const std::string name : {"a/b", "../x", "../QUEUEDefinitions/c"}) {
    const auto document = folder.Loaded();
    Section& queue = AddQueue(*document, name);
    EXPECT_EQ(queue.GetValue("every"), "1") << "from the template";
    queue.SetValue("every", "2");
    ExpectCannotSave(*document, name,
                     "Its file would not lie in the folder of the queues. Please delete this queue and "
                     "add it under another name.",
                     folder.QueuePath(name + ".xml"));
  }
  EXPECT_EQ(folder.Read("x.xml"), "<queue every=\"5\"/>");
  for (const char* name : {"a/b.xml", "c.xml"}) EXPECT_FALSE(folder.HasQueue(name)) << name;
}

TEST(QueueFile, DeletedAndAddedAgainItStartsFromTheTemplate) {
  const Night folder("<queue every=\"7\"/>", "Night.XML");
  Ini* const document = folder.document.get();
  document->Delete("Night");
  Section& queue = AddQueue(*document, "Night");
  EXPECT_EQ(queue.GetValue("every"), "1");
  document->Save();  // only the removal: the new one does not differ from the template
  EXPECT_FALSE(folder.HasQueue("Night.XML"));
  EXPECT_FALSE(folder.HasQueue("Night.xml"));
  queue.SetValue("every", "2");
  document->Save();
  EXPECT_NE(folder.Queue("Night.xml").find("every=\"2\""), std::string::npos);
  // A file of that name that appeared meanwhile is not overwritten, nor taken over by a removal.
  Section& other = AddQueue(*document, "Day");
  folder.WriteQueue("DAY.xml", "<queue every=\"8\"/>");
  other.SetValue("every", "3");
  ExpectCannotSave(*document, "Day", "A file of this name exists already and was not loaded.",
                   folder.QueuePath("DAY.xml"));
  document->Delete("Day");
  document->Save();
  EXPECT_EQ(folder.Queue("DAY.xml"), "<queue every=\"8\"/>");
}

TEST(QueueFile, EntitiesNeitherReadFilesNorFillTheMemory) {
  const ServiceFolder other;
  other.Write("secret.txt", "top secret");
  const std::string external = "<!DOCTYPE q [<!ENTITY f SYSTEM \"file://" + other / "secret.txt" + "\">]>";
  std::string levels = "<!DOCTYPE q [<!ENTITY e0 \"0123456789\">";
  for (int level = 1; level < 12; ++level) {
    levels += "<!ENTITY e" + std::to_string(level) + " \"";
    for (int copy = 0; copy < 10; ++copy) levels += "&e" + std::to_string(level - 1) + ";";
    levels += "\">";
  }
  for (const std::string& bytes :
       {levels + "]><queue every=\"&e11;\"/>", levels + "]><queue every=\"1\">&e11;</queue>",
        external + "<queue every=\"&f;\"/>"})
    EXPECT_EQ(Shown(Night(bytes).queue), "3Night{}?") << bytes;
  // Six times 3 MB, which libxml2 itself would accept.
  const std::string large = "<!DOCTYPE q [<!ENTITY e \"" + std::string(3'000'000, 'x') +
                            "\">]><queue every=\"&e;&e;&e;\" title=\"&e;&e;&e;\"/>";
  EXPECT_NE(Night(large).queue.QueueProblem().find("stand for more than 16 MB"), std::string::npos);
  const Night night(external + "<queue every=\"1\">&f;</queue>");
  night.queue.SetValue("every", "2");
  night.document->Save();
  EXPECT_EQ(night.Queue("Night.xml").find("top"), std::string::npos);
  EXPECT_NE(night.Queue("Night.xml").find("<queue every=\"2\">&f;</queue>"), std::string::npos);
}

TEST(QueueFile, PasswordsAreReadAndALoadThatFailsNamesTheFile) {
  const Night night("<queue Password=\"ulf\\\" every=\"1\"/>");
  EXPECT_EQ(Shown(night.queue), "3Night{Password=abc;every=1;}");
  const auto failure = [&](const std::string& bytes) { return FailureOf([&] { night.LoadedWith(bytes); }); };
  for (const auto& [bytes, name] : {std::pair("<queue every=\"1\"><a Every=\"1\"/></queue>", "Every"),
                                    {"<queue every=\"1\"><a every=\"2\"/></queue>", "every"},
                                    {"<all><a every=\"1\"/><a every=\"1\"/><queue/></all>", "every"}})
    EXPECT_EQ(failure(bytes), Failure(457, "PellorinConfig.exe, Collection",
                                      "Queue Night holds an attribute twice: \"" + std::string(name) +
                                          "\" is already an element of this collection",
                                      night.path));
  // No scrambled form has such a character.
  const std::string scrambled = failure("<queue Password=\"\u2603\"/>");
  EXPECT_TRUE(scrambled.starts_with("500112 | ") && scrambled.ends_with(night.path)) << scrambled;
}

}  // namespace
}  // namespace pellorin::test
