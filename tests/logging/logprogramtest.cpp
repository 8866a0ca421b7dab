#include <QTest>
int main() {}
