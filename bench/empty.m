/// A process that is linked to GNUstep and does nothing: the yardstick for quitting right after the start.
int main(void)
{
    return 0;
}
