/* The least that the receiving end of a one-shot secret can be: reads the pipe once and prints what
 * it held. What `vellomar --secret` is measured against. */
#include <fcntl.h>
#include <stddef.h>
#include <string.h>
#include <unistd.h>

int main(int argc, char *argv[])
{
    char buffer[1024];
    int descriptor;
    ssize_t length;
    /* Called with the same words as the program, so that one driver serves both. */
    if (argc != 3 || strcmp(argv[1], "--secret") != 0) {
        return 1;
    }
    descriptor = open(argv[2], O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return 1;
    }
    length = read(descriptor, buffer, sizeof buffer);
    return length > 0 && write(STDOUT_FILENO, buffer, (size_t)length) == length ? 0 : 1;
}
