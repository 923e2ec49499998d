#include <QImageReader>
#include <QString>
#include <chrono>
#include <cstdio>
#include <cstdlib>

/// Decodes the picture that its argument names once for each line that comes in, and prints how
/// many milliseconds it took: the floor for whoever wants to show it now and then.
int main(int count, char** arguments) {
    if (count != 2) return EXIT_FAILURE;
    for (int character = std::getchar(); character != EOF; character = std::getchar()) {
        if (character != '\n') continue;
        const auto start = std::chrono::steady_clock::now();
        QImageReader reader(QString::fromLocal8Bit(arguments[1]));
        reader.setAllocationLimit(0);
        if (reader.read().isNull()) return EXIT_FAILURE;
        const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
        std::printf("%.3f\n", elapsed.count());
        std::fflush(stdout);
    }
    return EXIT_SUCCESS;
}
