// Carries the Qt headers every Qt test parses, compiled once.
int main()
{
    return 0;
}
