#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "tests/config/ServiceFolder.h"

namespace pellorin {
namespace {

namespace fs = std::filesystem;
using test::CannotSave;
using test::Failure;
using test::FailureOf;
using test::kTemplate;
using test::ServiceFolder;
using test::Shown;
using std::string_literals::operator""s;

Section& AddQueue(Ini& document, const std::string& name) {
  Section& queue = document.Add(name, SectionType::Queue);
  queue.Load();
  return queue;
}

// Text in UTF-16, which the table below gives as ASCII.
std::string Utf16(const std::string& ascii, bool littleEndian) {
  std::string bytes = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
  for (const char character : ascii) bytes += littleEndian ? ""s + character + '\0' : "\0"s + character;
  return bytes;
}

TEST(QueueFile, ANewQueueStartsFromTheTemplateAndIsWrittenOnceItDiffers) {
  const ServiceFolder folder;
  const auto document = folder.Loaded();
  Section& queue = AddQueue(*document, "Night");
  EXPECT_EQ(Shown(queue), "3Night{frequency=daily;every=1;days=;}");
  EXPECT_TRUE(queue.IsOriginal());
  document->Save();
  EXPECT_FALSE(folder.HasQueue("Night.xml"));
  queue.SetValue("every", "2");
  queue.SetValue("startdate", "<&\"'>\t\r\n\u2603");
  document->Save();
  EXPECT_EQ(folder.Queue("Night.xml"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- new queues start here -->\n"
            "<queue frequency=\"daily\" every=\"2\" days=\"\" "
            "startdate=\"&lt;&amp;&quot;'&gt;&#9;&#13;&#10;\u2603\"/>\n");
  EXPECT_EQ(folder.Read(test::kTemplateName), kTemplate);
  const auto reloaded = folder.Loaded();
  EXPECT_EQ(reloaded->GetSection("Night")->GetValue("startdate"), "<&\"'>\t\r\n\u2603");
  EXPECT_EQ(reloaded->Count(), 1);
}

TEST(QueueFile, SavingKeepsWhateverElseTheFileHolds) {
  // Each file is loaded, "every" becomes "2" and "added" a snowman.
  struct Row {
    const char* what;
    std::string before, after;
  };
  const std::string snow = "\u2603";
  const Row rows[] = {
      {"comments, instructions, other elements, order",
       "<?xml version=\"1.0\"?>\n<?style a?>\n<!-- b -->\n<all z=\"1\">\n  text &lt; <b/>\n"
       "  <queue every=\"1\"><!-- in --><c d=\"&#233;\">t</c></queue>\n  <queue/>\n</all>\n<!-- end -->\n",
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<?style a?>\n<!-- b -->\n<all z=\"1\">\n"
       "  text &lt; <b/>\n"
       "  <queue every=\"2\" z=\"1\" d=\"\u00E9\" added=\"\u2603\"><!-- in --><c d=\"\u00E9\">t</c></queue>\n"
       "  <queue/>\n</all>\n<!-- end -->\n"},
      {"document type and CDATA",
       "<!DOCTYPE queue [<!ENTITY n \"night\">]>\n<queue every=\"1\" a=\"&n;\"><![CDATA[<]]>&n;</queue>\n",
       "<!DOCTYPE queue [\n<!ENTITY n \"night\">\n]>\n<queue every=\"2\" a=\"&n;\" added=\"" + snow +
           "\"><![CDATA[<]]>&n;</queue>\n"},
      {"UTF-8 with a mark and a declaration",
       "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<queue every=\"1\"/>\n",
       "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<queue every=\"2\" added=\"" + snow +
           "\"/>\n"},
      {"Windows line ends",
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- a\r\nb -->\r\n<queue every=\"1\"/>\r\n",
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- a\r\nb -->\r\n<queue every=\"2\" added=\"" + snow +
           "\"/>\r\n"},
      {"windows-1252",
       "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<queue every=\"1\" n=\"\x80\xE4\"/>\n",
       "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n"
       "<queue every=\"2\" n=\"\x80\xE4\" added=\"&#9731;\"/>\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    const ServiceFolder folder;
    folder.WriteQueue("Night.xml", row.before);
    const auto document = folder.Loaded();
    Section& queue = *document->GetSection("Night");
    EXPECT_EQ(queue.QueueProblem(), "");
    queue.SetValue("every", "2");
    queue.SetValue("added", snow);
    document->Save();
    EXPECT_EQ(folder.Queue("Night.xml"), row.after);
  }
}

TEST(QueueFile, KeepsUtf16) {
  for (const bool littleEndian : {true, false})
    for (const std::string start : {"", "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n"}) {
      SCOPED_TRACE(start + (littleEndian ? "little" : "big"));
      const auto bytes = [&](const std::string& every) {
        return Utf16(start + "<!-- x -->\r\n<queue every=\"" + every + "\"/>\r\n", littleEndian);
      };
      const ServiceFolder folder;
      folder.WriteQueue("Night.xml", bytes("1"));
      const auto document = folder.Loaded();
      Section& queue = *document->GetSection("Night");
      EXPECT_EQ(Shown(queue), "3Night{every=1;}");
      queue.SetValue("every", "2");
      document->Save();
      EXPECT_EQ(folder.Queue("Night.xml"), bytes("2"));
    }
}

TEST(QueueFile, AnUnusableFileIsAQueueWithoutSettingsThatIsNeverWritten) {
  const std::string noXml = "It is no well-formed XML: line ";
  const std::pair<std::string, std::string> rows[] = {
      {"", "It is empty."},
      {"<queue every=\"1\">\n<a></queue>", noXml + "2: "},
      {std::string(300, '\0'), noXml},
      {"<queue every=\"1\" every=\"2\"/>", noXml + "1: Attribute every redefined"},
      {"<?xml version=\"1.0\" encoding=\"nonsense\"?><queue/>", noXml},
      {"<queue every=\"\xFF\"/>", noXml},
      {"<Queue every=\"1\"/>", "It holds no element \"queue\"."},
  };
  for (const auto& [bytes, reason] : rows) {
    SCOPED_TRACE(bytes.substr(0, 50));
    const ServiceFolder folder;
    folder.WriteQueue("Night.xml", bytes);
    const auto document = folder.Loaded();
    Section& queue = *document->GetSection("Night");
    const std::string problem = queue.QueueProblem();
    EXPECT_TRUE(problem.starts_with(folder.QueuePath("Night.xml") + "\r\n" + reason)) << problem;
    EXPECT_EQ(Shown(queue), reason.find("queue") == std::string::npos ? "3Night{}?" : "3Night{every=1;}?");
    queue.SetValue("every", "2");
    EXPECT_EQ(
        FailureOf([&] { document->Save(); }),
        CannotSave("Night", "Its definition could not be read: " + problem, folder.QueuePath("Night.xml")));
    EXPECT_EQ(folder.Queue("Night.xml"), bytes);
    document->Delete("Night");
    document->Save();
    EXPECT_FALSE(folder.HasQueue("Night.xml"));
  }
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
  folder.Write(test::kTemplateName, "<queue");
  EXPECT_TRUE(AddQueue(*document, "A").QueueProblem().starts_with(folder / test::kTemplateName));
  fs::remove(folder / test::kTemplateName);
  Section& queue = AddQueue(*document, "B");
  EXPECT_EQ(queue.QueueProblem(),
            folder / test::kTemplateName + "\r\nCannot read the file: it does not exist");
  queue.SetValue("every", "1");
  EXPECT_NE(FailureOf([&] { document->Save(); }), "no failure");
  EXPECT_FALSE(folder.HasQueue("B.xml"));
}

TEST(QueueFile, TwoAttributesOfOneNameFailTheLoadAndNameTheFile) {
  const ServiceFolder folder;
  folder.WriteQueue("Night.xml", "<queue every=\"1\"><a Every=\"2\"/></queue>");
  EXPECT_EQ(
      FailureOf([&] { folder.Loaded(); }),
      Failure(457, "PellorinConfig.exe, Collection",
              "Queue Night holds an attribute twice: \"Every\" is already an element of this collection",
              folder.QueuePath("Night.xml")));
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
  EXPECT_EQ(Shown(*document),
            "2ADMIN:Pellorin{}\n3b.old.xml{every=2;}\n3DefaultQueue{every=9;}\n3\u212A{every=4;}\n"
            "3Night{every=1;}\n");
  document->GetSection("Night")->SetValue("every", "2");
  EXPECT_EQ(Shown(AddQueue(*document, "new")), "3new{every=9;}");
  document->Save();
  EXPECT_EQ(folder.Read("QueueDefinitions/Night.XML"), "<queue every=\"2\"/>\n");
  EXPECT_FALSE(folder.Has("QueueDefinitions/Night.xml"));
  document->Delete("Night");
  document->Save();
  EXPECT_FALSE(folder.Has("QueueDefinitions/Night.XML"));
  EXPECT_TRUE(folder.Has("QueueDefinitions/.Night.xml.0123.tmp"));
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
    EXPECT_EQ(FailureOf([&] { document->Save(); }),
              CannotSave(name,
                         "Its file would not lie in the folder of the queues. Please delete this queue and "
                         "add it under another name.",
                         folder.QueuePath(name + ".xml")));
  }
  EXPECT_EQ(folder.Read("x.xml"), "<queue every=\"5\"/>");
  for (const char* name : {"a/b.xml", "c.xml"}) EXPECT_FALSE(folder.HasQueue(name)) << name;
}

TEST(QueueFile, DeletedAndAddedAgainItStartsFromTheTemplate) {
  const ServiceFolder folder;
  folder.WriteQueue("Night.XML", "<queue every=\"7\"/>");
  const auto document = folder.Loaded();
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
  EXPECT_EQ(FailureOf([&] { document->Save(); }),
            CannotSave("Day", "A file of this name exists already and was not loaded.",
                       folder.QueuePath("DAY.xml")));
  document->Delete("Day");
  document->Save();
  EXPECT_EQ(folder.Queue("DAY.xml"), "<queue every=\"8\"/>");
}

TEST(QueueFile, ValuesThatXmlCannotExpressAreRefused) {
  const ServiceFolder folder;
  const std::string before = "<queue every=\"1\"/>";
  folder.WriteQueue("Night.xml", before);
  for (const std::string& value : {"a\x01"s, "a\0b"s, "\xFF"s, "\xEF\xBF\xBF"s}) {
    const auto document = folder.Loaded();
    document->GetSection("Night")->SetValue("every", value);
    EXPECT_EQ(FailureOf([&] { document->Save(); }),
              CannotSave("Night", "The value of every holds a character that XML cannot express.",
                         folder.QueuePath("Night.xml")));
    EXPECT_EQ(folder.Queue("Night.xml"), before);
    EXPECT_TRUE(document->HasChanges());
  }
}

TEST(QueueFile, EntitiesNeitherReadFilesNorFillTheMemory) {
  const auto start = std::chrono::steady_clock::now();
  const ServiceFolder folder;
  folder.Write("secret.txt", "top secret");
  const std::string external = "<!ENTITY f SYSTEM \"file://" + folder / "secret.txt" + "\">";
  std::string levels = "<!ENTITY e0 \"0123456789\">";
  for (int level = 1; level < 12; ++level) {
    levels += "<!ENTITY e" + std::to_string(level) + " \"";
    for (int copy = 0; copy < 10; ++copy) levels += "&e" + std::to_string(level - 1) + ";";
    levels += "\">";
  }
  for (const std::string& bytes : {"<!DOCTYPE q [" + levels + "]><queue every=\"&e11;\"/>",
                                   "<!DOCTYPE q [" + levels + "]><queue every=\"1\">&e11;</queue>",
                                   "<!DOCTYPE q [" + external + "]><queue every=\"&f;\"/>"}) {
    folder.WriteQueue("Night.xml", bytes);
    EXPECT_EQ(Shown(*folder.Loaded()->GetSection("Night")), "3Night{}?") << bytes;
  }
  folder.WriteQueue("Night.xml", "<!DOCTYPE q [" + external + "]><queue every=\"1\">&f;</queue>");
  const auto document = folder.Loaded();
  document->GetSection("Night")->SetValue("every", "2");
  document->Save();
  EXPECT_EQ(folder.Queue("Night.xml").find("top"), std::string::npos);
  EXPECT_NE(folder.Queue("Night.xml").find("<queue every=\"2\">&f;</queue>"), std::string::npos);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(QueueFile, ScrambledPasswordsAreReadAndReplacedOnlyWhenChanged) {
  const ServiceFolder folder;
  folder.WriteQueue("Night.xml", "<queue Password=\"ulf\\\" every=\"1\"/>");
  const auto document = folder.Loaded();
  Section& queue = *document->GetSection("Night");
  EXPECT_EQ(Shown(queue), "3Night{Password=abc;every=1;}");
  queue.SetValue("every", "2");
  document->Save();
  EXPECT_EQ(folder.Queue("Night.xml"), "<queue Password=\"ulf\\\" every=\"2\"/>\n");
  folder.WriteQueue("Night.xml", "<queue Password=\"\u2603\"/>");  // no scrambled form has such a character
  const std::string failure = FailureOf([&] { folder.Loaded(); });
  EXPECT_TRUE(failure.starts_with("500112 | ") && failure.ends_with(folder.QueuePath("Night.xml")))
      << failure;
}

}  // namespace
}  // namespace pellorin
