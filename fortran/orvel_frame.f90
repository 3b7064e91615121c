! fortran/orvel_frame.f90 - interfaces of the frame: outcome of calls, switches, messages, constants, units
!
! A character argument passes its length behind the argument list, so E1PSH("NAME ", ...) of C is
! call e1psh("NAME ") here. Arguments that are read or written, as another one says, have no intent, so that
! call umach(-3, 9) compiles. AMACH is not here, but in orvel_constants and amach_int, of which a program uses one.
module orvel_frame
  use orvel_constants, only: dmach, imach, srmach, drmach
  implicit none
  public

  ! Elements of a message packet.
  type, bind(c) :: s_epack
    integer :: whole
    real :: real
  end type s_epack
  type, bind(c) :: d_epack
    integer :: whole
    double precision :: real
  end type d_epack

  interface
    subroutine erset(iersvr, ipact, isact)
      integer, intent(in) :: iersvr, ipact, isact
    end subroutine erset
    subroutine e1pos(iertyp, ipatt, isatt)
      integer, intent(in) :: iertyp
      integer :: ipatt, isatt
    end subroutine e1pos
    integer function iercd()
    end function iercd
    integer function n1rty(iopt)
      integer, intent(in) :: iopt
    end function n1rty
    integer function n1rcd(iopt)
      integer, intent(in) :: iopt
    end function n1rcd
    integer function n1rnof(iopt)
      integer, intent(in) :: iopt
    end function n1rnof
    integer function n1rgb()
    end function n1rgb
    integer function n1thrd()
    end function n1thrd
    subroutine e1init()
    end subroutine e1init
    subroutine e1psh(name)
      character(*), intent(in) :: name
    end subroutine e1psh
    subroutine e1pop(name)
      character(*), intent(in) :: name
    end subroutine e1pop
    subroutine e1usr(switch)
      character(*), intent(in) :: switch
    end subroutine e1usr
    integer function e1mem(action, i, ivalue, name)
      character(*), intent(in) :: action
      integer, intent(in) :: i
      integer :: ivalue
      character(*) :: name
    end function e1mem
    subroutine e1mes(iertyp, iercod, msgpkd)
      integer, intent(in) :: iertyp, iercod
      character(*), intent(in) :: msgpkd
    end subroutine e1mes
    subroutine e1prt()
    end subroutine e1prt
    subroutine e1ucs()
    end subroutine e1ucs
    subroutine e1sti(id, ivalue)
      integer, intent(in) :: id, ivalue
    end subroutine e1sti
    subroutine e1str(id, rvalue)
      integer, intent(in) :: id
      real, intent(in) :: rvalue
    end subroutine e1str
    subroutine e1std(id, dvalue)
      integer, intent(in) :: id
      double precision, intent(in) :: dvalue
    end subroutine e1std
    subroutine e1stc(id, cvalue)
      integer, intent(in) :: id
      complex, intent(in) :: cvalue
    end subroutine e1stc
    subroutine e1stz(id, zvalue)
      integer, intent(in) :: id
      complex(kind(0d0)), intent(in) :: zvalue
    end subroutine e1stz
    subroutine e1stl(id, string)
      integer, intent(in) :: id
      character(*), intent(in) :: string
    end subroutine e1stl
    subroutine e1sta(id, len, string)
      integer, intent(in) :: id, len
      character(*), intent(in) :: string
    end subroutine e1sta
    subroutine s_error_post(epack, n)
      import :: s_epack
      type(s_epack), intent(in) :: epack(*)
      integer, intent(in) :: n
    end subroutine s_error_post
    subroutine d_error_post(epack, n)
      import :: d_epack
      type(d_epack), intent(in) :: epack(*)
      integer, intent(in) :: n
    end subroutine d_error_post
    subroutine umach(n, nunit)
      integer, intent(in) :: n
      integer :: nunit
    end subroutine umach
    subroutine iwkin(nsu)
      integer, intent(in) :: nsu
    end subroutine iwkin
    subroutine iwkcin(nchars)
      integer, intent(in) :: nchars
    end subroutine iwkcin
  end interface
end module orvel_frame
