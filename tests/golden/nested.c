#include "vantrel.h"
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      for(int i = 0;i < 2; ++i)
      {
            while(TZ_AI(1) > 500)
            {
                  while(1)
                  {
                        while(switch_state(3) != 0)
                        {
                              wait(0.1);
                        }
                  PlaySpeech(16);}
            }
      }set_motor(1, -speed1);
      set_motor(2, speed2);
      wait(1);
      set_motor(1, 0);
      set_motor(2, 0);
}
