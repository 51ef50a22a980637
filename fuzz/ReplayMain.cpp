// Runs a fuzz target without the fuzzing engine: every file of a seed folder, then a fixed number of
// inputs made from the target's dictionary by a generator with a fixed seed, so each run is the same.
//   replay_<target> CORPUS_DIR DICTIONARY COUNT
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

void runOne(const QByteArray& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.constData()), size_t(input.size()));
}

// The quoted entries of a libFuzzer dictionary ("token" or name="token"), with \\, \" and \xNN.
std::vector<QByteArray> readDictionary(const QString& path) {
    std::vector<QByteArray> tokens;
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return tokens;
    for (const QByteArray& raw : f.readAll().split('\n')) {
        const QByteArray line = raw.trimmed();
        const qsizetype open = line.indexOf('"');
        if (line.startsWith('#') || open < 0 || !line.endsWith('"') || line.size() - open < 2) continue;
        const QByteArray body = line.mid(open + 1, line.size() - open - 2);
        QByteArray token;
        for (qsizetype i = 0; i < body.size(); ++i) {
            if (body[i] == '\\' && i + 1 < body.size()) {
                if (body[i + 1] == 'x' && i + 3 < body.size()) {
                    token += char(body.mid(i + 2, 2).toInt(nullptr, 16));
                    i += 3;
                } else {
                    token += body[++i];
                }
            } else {
                token += body[i];
            }
        }
        tokens.push_back(token);
    }
    return tokens;
}

QByteArray generate(std::mt19937& rng, const std::vector<QByteArray>& tokens) {
    auto pick = [&](int n) { return int(std::uniform_int_distribution<int>(0, n - 1)(rng)); };
    QByteArray in;
    in += char('0' + pick(4)); // locale and options
    const int shape = pick(20);
    if (shape == 0) {
        // Deep nesting of one token around another.
        const QByteArray& outer = tokens.empty() ? QByteArray("(") : tokens[size_t(pick(int(tokens.size())))];
        const int depth = 1 + pick(3000);
        for (int i = 0; i < depth; ++i)
            in += outer;
        in += QByteArray::number(pick(1000));
        in += QByteArray(pick(depth + 1), ')');
        return in;
    }
    const int count = 1 + pick(shape == 1 ? 2000 : 24);
    for (int i = 0; i < count; ++i) {
        const int kind = pick(10);
        if (kind < 7 && !tokens.empty())
            in += tokens[size_t(pick(int(tokens.size())))];
        else if (kind < 9)
            in += QByteArray::number(pick(100000));
        else
            in += char(pick(256));
    }
    return in;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s CORPUS_DIR DICTIONARY COUNT\n", argv[0]);
        return 2;
    }
    const auto started = std::chrono::steady_clock::now();
    int seeds = 0;
    const QDir corpus(QString::fromLocal8Bit(argv[1]));
    for (const QString& name : corpus.entryList(QDir::Files, QDir::Name)) {
        QFile f(corpus.filePath(name));
        if (!f.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", qPrintable(f.fileName()));
            return 1;
        }
        runOne(f.readAll());
        ++seeds;
    }
    if (seeds == 0) {
        std::fprintf(stderr, "no seeds in %s\n", argv[1]);
        return 1;
    }
    const std::vector<QByteArray> tokens = readDictionary(QString::fromLocal8Bit(argv[2]));
    const long count = std::strtol(argv[3], nullptr, 10);
    std::mt19937 rng(20240305u);
    for (long i = 0; i < count; ++i)
        runOne(generate(rng, tokens));
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    std::printf("%d seeds and %ld generated inputs in %.2f s\n", seeds, count, seconds);
    return 0;
}
