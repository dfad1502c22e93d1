// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "settings/ini_text.h"
#include "test_class.h"

#include <QMap>
#include <QRandomGenerator>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr int large = 10'000;
const auto byteOrderMark = "\xEF\xBB\xBF"_ba;

/// Up to `longest` characters, every other one out of `favourites`, the rest any that fit into one byte of a line.
QString randomText(QRandomGenerator &random, qsizetype longest, const QString &favourites)
{
    QByteArray bytes;
    const auto length = static_cast<qsizetype>(random.bounded(static_cast<int>(longest) + 1));
    while (bytes.size() < length) {
        const char byte = static_cast<char>(random.bounded(1, 256));
        if (random.bounded(2) == 0)
            bytes += toAnsi(favourites.at(random.bounded(static_cast<int>(favourites.size()))));
        else if (byte != '\r' && byte != '\n')
            bytes += byte;
    }
    return fromAnsi(bytes);
}

} // namespace

class IniTextTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aValueIsRead_data();
    void aValueIsRead();
    void namesWithOtherLettersIgnoreTheirCase();
    void aCommentHasNoKey();
    void aValueIsCutToOneLessThanTheBuffer_data();
    void aValueIsCutToOneLessThanTheBuffer();
    void aChangeKeepsAllOtherBytes_data();
    void aChangeKeepsAllOtherBytes();
    void aValueIsOneLineThatReadsBackAsItWas_data();
    void aValueIsOneLineThatReadsBackAsItWas();
    void anyValueComesBack();
    void anyBytesAreKept();
    void aFreshReadingAgreesAfterEveryChange();
    void aMegabyteLineIsSurvived();
};

void IniTextTest::aValueIsRead_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plain") << "[servers]\r\nserver1=cod.example.org\r\n"_ba << u"cod.example.org"_s;
    QTest::newRow("no file") << ""_ba << u""_s;
    QTest::newRow("no section") << "[ports]\r\nserver1=a\r\n"_ba << u""_s;
    QTest::newRow("no key") << "[servers]\r\nserver2=a\r\n"_ba << u""_s;
    QTest::newRow("key of another section") << "[servers]\r\n[ports]\r\nserver1=a\r\n"_ba << u""_s;
    QTest::newRow("key before all sections") << "server1=a\r\n[servers]\r\n"_ba << u""_s;
    QTest::newRow("other case") << "[SERVERS]\r\nServer1=a\r\n"_ba << u"a"_s;
    QTest::newRow("blanks everywhere") << "  [ servers ]\r\n  server1  =  a b  \r\n"_ba << u"a b"_s;
    QTest::newRow("tab is no blank") << "[servers]\r\nserver1=\ta\t\r\n"_ba << u"\ta\t"_s;
    QTest::newRow("text after the header") << "[servers] mine\r\nserver1=a\r\n"_ba << u"a"_s;
    QTest::newRow("header without its end") << "[servers\r\nserver1=a\r\n"_ba << u""_s;
    QTest::newRow("empty") << "[servers]\r\nserver1=\r\n"_ba << u""_s;
    QTest::newRow("blanks only") << "[servers]\r\nserver1=   \r\n"_ba << u"   "_s;
    QTest::newRow("line without equals sign") << "[servers]\r\nserver1\r\nserver1=a\r\n"_ba << u"a"_s;
    QTest::newRow("equals sign inside") << "[servers]\r\nserver1=a=b\r\n"_ba << u"a=b"_s;
    QTest::newRow("header inside") << "[servers]\r\nserver1=[ports]\r\n"_ba << u"[ports]"_s;

    QTest::newRow("double quotes") << "[servers]\r\nserver1=\"a\"\r\n"_ba << u"a"_s;
    QTest::newRow("single quotes") << "[servers]\r\nserver1='a'\r\n"_ba << u"a"_s;
    QTest::newRow("blanks around quotes") << "[servers]\r\nserver1=  \" a \" \r\n"_ba << u" a "_s;
    QTest::newRow("only blanks in quotes") << "[servers]\r\nserver1=\"  \"\r\n"_ba << u"  "_s;
    QTest::newRow("nothing in quotes") << "[servers]\r\nserver1=\"\"\r\n"_ba << u""_s;
    QTest::newRow("two pairs") << "[servers]\r\nserver1=\"'a'\"\r\n"_ba << u"'a'"_s;
    QTest::newRow("unlike quotes") << "[servers]\r\nserver1=\"a'\r\n"_ba << uR"("a')"_s;
    QTest::newRow("one quote") << "[servers]\r\nserver1=\"\r\n"_ba << uR"(")"_s;
    QTest::newRow("quote at the start") << "[servers]\r\nserver1=\"a\r\n"_ba << uR"("a)"_s;
    QTest::newRow("quotes inside") << "[servers]\r\nserver1=a\"b\"c\r\n"_ba << uR"(a"b"c)"_s;

    QTest::newRow("comment") << "[servers]\r\n;server1=no\r\n  ; server1=no\r\nserver1=a\r\n"_ba << u"a"_s;
    QTest::newRow("comment only") << "[servers]\r\n;server1=no\r\n"_ba << u""_s;
    QTest::newRow("header in a comment") << ";[servers]\r\nserver1=no\r\n"_ba << u""_s;
    QTest::newRow("semicolon inside") << "[servers]\r\nserver1=a;b\r\n"_ba << u"a;b"_s;
    QTest::newRow("first key counts") << "[servers]\r\nserver1=a\r\nSERVER1=b\r\n"_ba << u"a"_s;
    QTest::newRow("first key counts though empty") << "[servers]\r\nserver1=\r\nserver1=b\r\n"_ba << u""_s;
    QTest::newRow("first section counts") << "[servers]\r\nserver1=a\r\n[Servers]\r\nserver1=b\r\n"_ba << u"a"_s;
    QTest::newRow("only first section counts") << "[servers]\r\n[servers]\r\nserver1=b\r\n"_ba << u""_s;

    QTest::newRow("line feeds only") << "[servers]\nserver0=z\nserver1=a\n"_ba << u"a"_s;
    QTest::newRow("no end at the end") << "[servers]\r\nserver1=a"_ba << u"a"_s;
    QTest::newRow("blank lines between") << "\r\n \r\n[servers]\r\n\r\n\n  \r\nserver1=a\r\n"_ba << u"a"_s;
    QTest::newRow("carriage return inside") << "[servers]\r\nserver1=a\rb\r\r\n"_ba << u"a b"_s;
    QTest::newRow("NUL inside") << "[servers]\r\nserver1=a\0b\r\n"_ba << u"a b"_s;
    QTest::newRow("NUL only") << "[servers]\r\nserver1=\0\r\n"_ba << u" "_s;
    QTest::newRow("byte-order mark") << byteOrderMark + "[servers]\r\nserver1=a\r\n" << u"a"_s;
    QTest::newRow("NUL bytes elsewhere") << "\0[servers]\r\n\0\r\n[servers]\r\n\0\r\nserver1=a\r\n"_ba << u"a"_s;
    QTest::newRow("upper half") << "[servers]\r\nserver1=\x80\xFC\x81\r\n"_ba << u"\u20AC\u00FC\u0081"_s;
}

void IniTextTest::aValueIsRead()
{
    QFETCH(const QByteArray, file);
    QFETCH(const QString, expected);
    QCOMPARE(IniText(file).value(u"servers"_s, u"server1"_s, large), expected);
}

void IniTextTest::namesWithOtherLettersIgnoreTheirCase()
{
    const IniText text("[\xC4rger]\r\n\x8Aport=1\r\n"_ba);
    QCOMPARE(text.value(u"\u00E4RGER"_s, u"\u0161PORT"_s, large), u"1"_s);
}

void IniTextTest::aCommentHasNoKey()
{
    const IniText text("[servers]\r\n;server1=a\r\n  ;server2=b\r\n"_ba);
    QCOMPARE(text.value(u"servers"_s, u";server1"_s, large), u""_s);
    QCOMPARE(text.value(u"servers"_s, u";server2"_s, large), u""_s);
}

void IniTextTest::aValueIsCutToOneLessThanTheBuffer_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("buffer");
    QTest::addColumn<QString>("expected");

    QTest::newRow("two digits, room for one") << "10"_ba << 2 << u"1"_s;
    QTest::newRow("just fits") << "123456"_ba << 7 << u"123456"_s;
    QTest::newRow("one too many") << "1234567"_ba << 7 << u"123456"_s;
    QTest::newRow("quotes do not count") << R"("28960")"_ba << 5 << u"2896"_s;
    QTest::newRow("a cut may end in a blank") << "a b"_ba << 3 << u"a "_s;
    QTest::newRow("blanks only") << "     "_ba << 3 << u"  "_s;
    QTest::newRow("long") << QByteArray(300, 'x') << 200 << QString(199, u'x');
    QTest::newRow("room for the terminator alone") << "a"_ba << 1 << u""_s;
    QTest::newRow("no room") << "a"_ba << 0 << u""_s;
}

void IniTextTest::aValueIsCutToOneLessThanTheBuffer()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const int, buffer);
    QFETCH(const QString, expected);
    QCOMPARE(IniText("[options]\r\nkey=" + stored + "\r\n").value(u"options"_s, u"key"_s, buffer), expected);
}

void IniTextTest::aChangeKeepsAllOtherBytes_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    // All rows set key "port1" of section "ports" to 28960.
    QTest::newRow("new file") << ""_ba
                              << "[ports]\r\nport1=28960\r\n"_ba;
    QTest::newRow("byte-order mark alone") << byteOrderMark << byteOrderMark + "[ports]\r\nport1=28960\r\n";
    QTest::newRow("byte-order mark") << byteOrderMark + "[ports]\nport1=1\n"
                                     << byteOrderMark + "[ports]\nport1=28960\r\n";
    QTest::newRow("new section") << "; mine\n[a]\nb=c\n"_ba
                                 << "; mine\n[a]\nb=c\n[ports]\r\nport1=28960\r\n"_ba;
    QTest::newRow("new section, no end") << "[a]\nb=c"_ba
                                         << "[a]\nb=c\r\n[ports]\r\nport1=28960\r\n"_ba;
    QTest::newRow("new section after blanks") << "[a]\n\n  "_ba
                                              << "[a]\n\n  \r\n[ports]\r\nport1=28960\r\n"_ba;
    QTest::newRow("new section after blanks only") << "  "_ba
                                                   << "  \r\n[ports]\r\nport1=28960\r\n"_ba;
    QTest::newRow("new key, no end") << "[ports]"_ba
                                     << "[ports]\r\nport1=28960\r\n"_ba;
    QTest::newRow("new key, blanks at the end") << "[ports]\n  "_ba
                                                << "[ports]\nport1=28960\r\n  "_ba;
    QTest::newRow("new key before blank lines")
        << "[ports]\nport0=1\n; end\n\n \r\n[rcon]\nrcon1=x\n"_ba
        << "[ports]\nport0=1\n; end\nport1=28960\r\n\n \r\n[rcon]\nrcon1=x\n"_ba;
    QTest::newRow("new key after inner blank lines") << "[ports]\n\n\nport0=1\n"_ba
                                                     << "[ports]\n\n\nport0=1\nport1=28960\r\n"_ba;
    QTest::newRow("new key in the first section") << "[ports]\n[x]\n[ports]\nport1=7\n"_ba
                                                  << "[ports]\nport1=28960\r\n[x]\n[ports]\nport1=7\n"_ba;
    QTest::newRow("other value") << "[ports]\nport0=1\nport1=7\nport2=3\n"_ba
                                 << "[ports]\nport0=1\nport1=28960\r\nport2=3\n"_ba;
    QTest::newRow("other value, own spelling") << "[PORTS]\r\n  Port1 = \"7\" \r\n"_ba
                                               << "[PORTS]\r\nPort1=28960\r\n"_ba;
    QTest::newRow("other value, no end") << "[ports]\nport1=7"_ba
                                         << "[ports]\nport1=28960\r\n"_ba;
    QTest::newRow("other value of the first") << "[ports]\nport1=7\nport1=8\n"_ba
                                              << "[ports]\nport1=28960\r\nport1=8\n"_ba;
    QTest::newRow("comment is no key") << "[ports]\n;port1=7\n"_ba
                                       << "[ports]\n;port1=7\nport1=28960\r\n"_ba;
    QTest::newRow("same value") << "[ports]\r\nport1=28960\r\n"_ba
                                << "[ports]\r\nport1=28960\r\n"_ba;
    QTest::newRow("foreign bytes") << "\0\xFF\r[\n=\n]\n[ports]\n\0=\0\nport1=7\n\t\n"_ba
                                   << "\0\xFF\r[\n=\n]\n[ports]\n\0=\0\nport1=28960\r\n\t\n"_ba;
}

void IniTextTest::aChangeKeepsAllOtherBytes()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    IniText text(before);
    text.set({u"ports"_s, u"port1"_s, u"28960"_s});
    QCOMPARE(text.bytes(), after);
    QCOMPARE(text.value(u"ports"_s, u"port1"_s, large), u"28960"_s);
}

void IniTextTest::aValueIsOneLineThatReadsBackAsItWas_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QString>("read");

    QTest::newRow("plain") << u"a b"_s << "a b"_ba << u"a b"_s;
    QTest::newRow("empty") << u""_s << ""_ba << u""_s;
    QTest::newRow("blanks only") << u"  "_s << "  "_ba << u"  "_s;
    QTest::newRow("blank before") << u" a"_s << R"(" a")"_ba << u" a"_s;
    QTest::newRow("blank behind") << u"a "_s << R"("a ")"_ba << u"a "_s;
    QTest::newRow("double quotes") << uR"("a")"_s << R"(""a"")"_ba << uR"("a")"_s;
    QTest::newRow("single quotes") << u"'a'"_s << R"("'a'")"_ba << u"'a'"_s;
    QTest::newRow("nothing in quotes") << uR"("")"_s << R"("""")"_ba << uR"("")"_s;
    QTest::newRow("one quote") << uR"(")"_s << R"(")"_ba << uR"(")"_s;
    QTest::newRow("quote before") << uR"("a)"_s << R"("a)"_ba << uR"("a)"_s;
    QTest::newRow("blank and quote") << uR"( ")"_s << R"(" "")"_ba << uR"( ")"_s;
    QTest::newRow("unlike quotes") << uR"('a")"_s << R"('a")"_ba << uR"('a")"_s;
    QTest::newRow("looks like a comment") << u";a"_s << ";a"_ba << u";a"_s;
    QTest::newRow("looks like a header") << u"[a]"_s << "[a]"_ba << u"[a]"_s;
    QTest::newRow("line ends and NUL") << u"a\r\nb\0c"_s << "a  b c"_ba << u"a  b c"_s;
    QTest::newRow("line end behind") << u"a\n"_s << R"("a ")"_ba << u"a "_s;
    QTest::newRow("upper half") << u"\u20AC\u00FC\u0081"_s << "\x80\xFC\x81"_ba << u"\u20AC\u00FC\u0081"_s;
    QTest::newRow("letter without a byte") << u"\u0436"_s << "?"_ba << u"?"_s;
}

void IniTextTest::aValueIsOneLineThatReadsBackAsItWas()
{
    QFETCH(const QString, value);
    IniText text;
    text.set({u"rcon"_s, u"rcon1"_s, value});
    QTEST(text.bytes().sliced(14).chopped(2), "written");
    QTEST(text.value(u"rcon"_s, u"rcon1"_s, large), "read");
    QTEST(IniText(text.bytes()).value(u"rcon"_s, u"rcon1"_s, large), "read");
}

void IniTextTest::anyValueComesBack()
{
    QRandomGenerator random(2005);
    IniText text("[rcon]\r\nrcon0=first\r\nrcon1=\r\nrcon2=last\r\n"_ba);
    for (int round = 0; round < 5'000; ++round) {
        const QString value = randomText(random, 12, uR"(  ""'';=[])"_s);
        text.set({u"rcon"_s, u"rcon1"_s, value});
        const IniText again(text.bytes());
        QCOMPARE(text.value(u"rcon"_s, u"rcon1"_s, large), value);
        QCOMPARE(again.value(u"rcon"_s, u"rcon1"_s, large), value);
        QCOMPARE(again.value(u"rcon"_s, u"rcon0"_s, large), u"first"_s);
        QCOMPARE(again.value(u"rcon"_s, u"rcon2"_s, large), u"last"_s);
    }
}

void IniTextTest::anyBytesAreKept()
{
    QRandomGenerator random(28960);
    for (int round = 0; round < 5'000; ++round) {
        const QByteArray bytes = toAnsi(randomText(random, 60, u"\r\n\0 ;=[]a"_s));
        QCOMPARE(IniText(bytes).bytes(), bytes);
    }
}

void IniTextTest::aFreshReadingAgreesAfterEveryChange()
{
    QRandomGenerator random(999);
    for (int round = 0; round < 100; ++round) {
        IniText text(toAnsi(randomText(random, 80, u"[]\n\n ;=\"aAbB"_s)));
        QMap<std::pair<QString, QString>, QString> expected;
        for (int change = 0; change < 20; ++change) {
            const IniEntry entry{u"abc"_s.at(random.bounded(3)), u"abcd"_s.at(random.bounded(4)),
                                 randomText(random, 4, uR"( ")"_s)};
            text.set(entry);
            expected.insert({entry.section, entry.key}, entry.value);
            const IniText again(text.bytes());
            QCOMPARE(again.bytes(), text.bytes());
            for (const auto &[name, value] : expected.asKeyValueRange()) {
                QCOMPARE(text.value(name.first, name.second, large), value);
                QCOMPARE(again.value(name.first, name.second, large), value);
            }
        }
    }
}

void IniTextTest::aMegabyteLineIsSurvived()
{
    const QByteArray line(1'000'000, 'x');
    const QByteArray file = line + "\n[set0]\nmess0=" + line + "\nname=" + line;
    IniText text(file);
    QCOMPARE(text.value(u"set0"_s, u"name"_s, 200), QString(199, u'x'));
    QCOMPARE(text.value(u"set0"_s, u"mess0"_s, 2'000'000), QString(1'000'000, u'x'));
    text.set({u"set0"_s, u"name"_s, u"short"_s});
    QCOMPARE(text.bytes(), line + "\n[set0]\nmess0=" + line + "\nname=short\r\n");
}

GUILESS_TEST(IniTextTest)
#include "tst_ini_text.moc"
