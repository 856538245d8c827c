// quib: the application.

#include <Process/Launch.h>

int main(int argc, char **argv)
{
    quib::WindowlessFrontEnd frontEnd;
    return quib::runQuib(argc, argv, frontEnd);
}
