#include "vantrel.h"
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      PlaySpeech(25);
      PlaySpeech(19);
      PlaySpeech(11);
      PlaySpeech(17);PlaySpeech(4);PlaySpeech(5);PlaySpeech(13);
}
