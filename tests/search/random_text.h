// Chance for the comparisons of the search with its plain twins. The seed is printed; LIROVAN_SEED repeats a
// run.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <iostream>
#include <random>

namespace lirovan::test {

using namespace Qt::StringLiterals;

class Random {
  public:
    Random() {
        const QByteArray wanted = qgetenv("LIROVAN_SEED");
        const unsigned seed = wanted.isEmpty() ? std::random_device{}() : wanted.toUInt();
        std::cout << "LIROVAN_SEED=" << seed << std::endl;
        engine_.seed(seed);
    }
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(engine_); }
    bool oneIn(int n) { return below(n) == 0; }
    template <class List>
    auto from(const List& list) {
        return list[below(int(std::size(list)))];
    }

  private:
    std::mt19937 engine_;
};

// Few letters, so that words overlap and repeat; letters with partners of other lengths among them.
inline const QStringList Words =
    u"i|İ|ı|I|a|ana|anana|ilim|İLİM|kâr|KÂR|Kar|ſu|su|quot|span|font|ş|😀|a😀|âbı|kar'|ve ilim|#0|<P|p>"_s
        .split(u'|');
inline const QStringList Marks =
    u" | |<P>|</P>|<br>|.|, |-|&quot;|<a name='ilim'>|'|’|&nbsp;|<|>|\u2028|“|\u212A|</font></span>|<p>"_s
        .split(u'|');

inline QString randomText(Random& random) {
    QString text;
    for (int pieces = random.below(60); pieces > 0; --pieces) {
        text += random.from(Words);
        if (!random.oneIn(3)) text += random.from(Marks);
        if (random.oneIn(25)) text += QString(random.below(230), u'x');
    }
    return text;
}

}  // namespace lirovan::test
