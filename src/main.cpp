#include "app/AppDelegate.h"
#include "platform/Application.h"

#include <memory>

int main(int argumentCount, char** arguments)
{
    return quillbar::platform::runApplication(
        argumentCount, arguments, [] { return std::make_shared<quillbar::AppDelegate>(); });
}
